#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>

#include "film/decoders.h"

namespace tool {
namespace {

// The file in memory as libtiff sees it.
struct Stream {
    std::string_view bytes;
    std::uint64_t at = 0;
    std::string message;  // the first that libtiff had
};

Stream& stream_of(thandle_t handle) {
    return *static_cast<Stream*>(handle);
}

tmsize_t take_bytes(thandle_t handle, void* target, tmsize_t count) {
    Stream& stream = stream_of(handle);
    if (count <= 0 || stream.at >= stream.bytes.size()) return 0;
    const std::size_t taken = std::min(static_cast<std::size_t>(count), stream.bytes.size() - stream.at);
    std::memcpy(target, stream.bytes.data() + stream.at, taken);
    stream.at += taken;
    return static_cast<tmsize_t>(taken);
}

tmsize_t refuse_bytes(thandle_t, void*, tmsize_t) {
    return -1;
}

toff_t seek(thandle_t handle, toff_t offset, int whence) {
    Stream& stream = stream_of(handle);
    const std::uint64_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? stream.at : stream.bytes.size();
    return stream.at = from + offset;
}

int close_nothing(thandle_t) {
    return 0;
}

toff_t size_of(thandle_t handle) {
    return stream_of(handle).bytes.size();
}

// libtiff (4.5) refuses small tiles that are not compressed unless the file is mapped.
int map_file(thandle_t handle, void** base, toff_t* size) {
    const std::string_view bytes = stream_of(handle).bytes;
    *base = const_cast<char*>(bytes.data());
    *size = bytes.size();
    return 1;
}

void unmap_file(thandle_t, void*, toff_t) {}

int note_error(TIFF*, void* user_data, const char*, const char* format, std::va_list arguments) {
    Stream& stream = *static_cast<Stream*>(user_data);
    if (!stream.message.empty()) return 1;
    char text[160];
    std::vsnprintf(text, sizeof text, format, arguments);
    stream.message = text;
    while (stream.message.ends_with('.')) stream.message.pop_back();
    return 1;
}

int pass_over(TIFF*, void*, const char*, const char*, std::va_list) {
    return 1;
}

struct Close {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, Close>;

Tiff opened(Stream& stream, std::size_t pixel_limit) {
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   TIFFOpenOptionsFree);
    // Room for a picture of the limit in one strip, four channels of 16 bits.
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(pixel_limit * 8 + 1'000'000));
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), note_error, &stream);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), pass_over, nullptr);
    return Tiff(TIFFClientOpenExt("film", "r", &stream, take_bytes, refuse_bytes, seek, close_nothing, size_of,
                                  map_file, unmap_file, options.get()));
}

// The tag's value, the standard's where the file has none.
template <class Value>
Value field(TIFF* tiff, std::uint32_t tag, Value otherwise = {}) {
    Value value{};
    return TIFFGetFieldDefaulted(tiff, tag, &value) ? value : otherwise;
}

std::string compression_name(std::uint16_t code) {
    struct Name {
        std::uint16_t code;
        const char* name;
    };
    constexpr Name names[] = {
        {COMPRESSION_NONE, "uncompressed"},
        {COMPRESSION_CCITTRLE, "CCITT RLE"},
        {COMPRESSION_CCITTFAX3, "CCITT G3"},
        {COMPRESSION_CCITTFAX4, "CCITT G4"},
        {COMPRESSION_LZW, "LZW"},
        {COMPRESSION_OJPEG, "JPEG (old kind)"},
        {COMPRESSION_JPEG, "JPEG"},
        {COMPRESSION_ADOBE_DEFLATE, "deflate"},
        {COMPRESSION_DEFLATE, "deflate"},
        {COMPRESSION_PACKBITS, "PackBits"},
        {COMPRESSION_LZMA, "LZMA"},
        {COMPRESSION_ZSTD, "Zstandard"},
        {COMPRESSION_WEBP, "WebP"},
    };
    for (const Name& row : names)
        if (row.code == code) return row.name;
    return "compression " + std::to_string(code);
}

void note_header(TIFF* tiff, FilmHeader& header) {
    header.compression = compression_name(field<std::uint16_t>(tiff, TIFFTAG_COMPRESSION));
    constexpr double cm_per_inch = 2.54;
    const auto unit = field<std::uint16_t>(tiff, TIFFTAG_RESOLUTIONUNIT);
    const double factor = unit == RESUNIT_INCH ? 1 : unit == RESUNIT_CENTIMETER ? cm_per_inch : 0;
    const double across = field<float>(tiff, TIFFTAG_XRESOLUTION) * factor;
    const double down = field<float>(tiff, TIFFTAG_YRESOLUTION) * factor;
    if (across > 0 && down > 0) header.resolution = Resolution{across, down};
    if (const auto orientation = field<std::uint16_t>(tiff, TIFFTAG_ORIENTATION); orientation > 1)
        header.doubts.push_back("The film's orientation (" + std::to_string(orientation) +
                                ") is not applied: pixels are counted as they are stored.");
    char* made = nullptr;
    for (const std::uint32_t tag : {TIFFTAG_MAKE, TIFFTAG_MODEL})
        if (TIFFGetField(tiff, tag, &made) == 1)
            header.made_by += (header.made_by.empty() ? "" : " ") + std::string(made);
}

// Sample 0 of pixels whose samples lie next to each other, `step` samples a pixel.
class GreySamples {
 public:
    GreySamples(int bits, int step) : bits_(bits), step_(step) {}

    void unpack(const std::uint8_t* from, std::size_t count, std::uint16_t* to) const {
        if (bits_ == 8) {
            for (std::size_t i = 0; i < count; ++i) to[i] = from[i * step_];
        } else if (bits_ == 16) {
            for (std::size_t i = 0; i < count; ++i) std::memcpy(to + i, from + 2 * i * step_, 2);
        } else {
            for (std::size_t i = 0; i < count; ++i) to[i] = packed(from, i * step_ * static_cast<std::size_t>(bits_));
        }
    }

 private:
    std::uint16_t packed(const std::uint8_t* from, std::size_t bit) const {
        unsigned value = 0;
        for (int i = 0; i < bits_; ++i, ++bit) value = value << 1 | (from[bit / 8] >> (7 - bit % 8) & 1u);
        return static_cast<std::uint16_t>(value);
    }

    int bits_;
    std::size_t step_;
};

class Reader {
 public:
    Reader(TIFF* tiff, Stream& stream, std::size_t pixel_limit)
        : tiff_(tiff), stream_(stream), pixel_limit_(pixel_limit) {}

    Film film() {
        const auto width = field<std::uint32_t>(tiff_, TIFFTAG_IMAGEWIDTH);
        const auto height = field<std::uint32_t>(tiff_, TIFFTAG_IMAGELENGTH);
        if (!film_size_allowed(width, height, pixel_limit_)) return without_film(film_size_error(width, height));
        note_header(tiff_, film_.header);
        film_.width = static_cast<int>(width), film_.height = static_cast<int>(height);
        const auto meaning = field<std::uint16_t>(tiff_, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        const bool grey = meaning == PHOTOMETRIC_MINISBLACK || meaning == PHOTOMETRIC_MINISWHITE;
        film_.rule.white_is_low = meaning == PHOTOMETRIC_MINISWHITE;
        if (tile_is_too_large()) return without_film("The TIFF picture's tiles are larger than a picture may be.");
        const std::string error = grey ? read_grey() : read_colour();
        if (!error.empty()) return without_film(error);
        note_frames();
        return std::move(film_);
    }

 private:
    std::string damaged(const std::string& place) const {
        return "The TIFF picture is damaged, ends early or is of a kind that can't be read" + place +
               (stream_.message.empty() ? "" : " (" + stream_.message + ")") + ".";
    }

    bool tile_is_too_large() const {
        return TIFFIsTiled(tiff_) && static_cast<std::uint64_t>(TIFFTileSize64(tiff_)) > 8 * pixel_limit_;
    }

    std::string read_grey() {
        const int bits = field<std::uint16_t>(tiff_, TIFFTAG_BITSPERSAMPLE);
        const auto sort = field<std::uint16_t>(tiff_, TIFFTAG_SAMPLEFORMAT);
        if (bits < 1 || bits > 16 ||
            (sort != SAMPLEFORMAT_UINT && sort != SAMPLEFORMAT_INT && sort != SAMPLEFORMAT_VOID))
            return "Grey TIFF pictures are read with whole samples of 1 to 16 bits; this one's have " +
                   std::to_string(bits) + (sort == SAMPLEFORMAT_IEEEFP ? " and are fractions." : ".");
        const bool apart = field<std::uint16_t>(tiff_, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
        const int samples = apart ? 1 : field<std::uint16_t>(tiff_, TIFFTAG_SAMPLESPERPIXEL);
        film_.bits = bits;
        film_.grey.resize(static_cast<std::size_t>(film_.width) * static_cast<std::size_t>(film_.height));
        const GreySamples layout(bits, samples);
        const std::string error = TIFFIsTiled(tiff_) ? read_tiles(layout) : read_rows(layout);
        if (error.empty() && sort == SAMPLEFORMAT_INT) shift_signed();
        return error;
    }

    std::string read_rows(const GreySamples& layout) {
        const std::size_t width = static_cast<std::size_t>(film_.width);
        std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize64(tiff_)));
        if (row.size() * 8 < width * static_cast<std::size_t>(film_.bits)) return damaged(" in its header");
        for (int y = 0; y < film_.height; ++y) {
            if (TIFFReadScanline(tiff_, row.data(), static_cast<std::uint32_t>(y), 0) != 1)
                return damaged(" at row " + std::to_string(y) + " of " + std::to_string(film_.height));
            layout.unpack(row.data(), width, film_.grey.data() + static_cast<std::size_t>(y) * width);
        }
        return {};
    }

    std::string read_tiles(const GreySamples& layout) {
        const auto tile_width = field<std::uint32_t>(tiff_, TIFFTAG_TILEWIDTH);
        const auto tile_height = field<std::uint32_t>(tiff_, TIFFTAG_TILELENGTH);
        const auto width = static_cast<std::uint32_t>(film_.width), height = static_cast<std::uint32_t>(film_.height);
        const auto row_size = static_cast<std::size_t>(TIFFTileRowSize64(tiff_));
        std::vector<std::uint8_t> tile(static_cast<std::size_t>(TIFFTileSize64(tiff_)));
        if (tile_width == 0 || tile_height == 0 || tile.size() < row_size * tile_height)
            return damaged(" in its header");
        for (std::uint32_t top = 0; top < height; top += tile_height) {
            for (std::uint32_t left = 0; left < width; left += tile_width) {
                if (TIFFReadTile(tiff_, tile.data(), left, top, 0, 0) < 0)
                    return damaged(" in the tile at " + std::to_string(left) + ", " + std::to_string(top));
                for (std::uint32_t y = 0; y < std::min(tile_height, height - top); ++y)
                    layout.unpack(tile.data() + y * row_size, std::min(tile_width, width - left),
                                  film_.grey.data() + std::size_t{top + y} * width + left);
            }
        }
        return {};
    }

    // Two's complement becomes a count from the lowest value.
    void shift_signed() {
        const int half = 1 << (film_.bits - 1);
        film_.rule.lowest = -half;
        for (std::uint16_t& sample : film_.grey) sample = static_cast<std::uint16_t>(sample ^ half);
    }

    // Whatever colours there are, libtiff knows how to show them.
    std::string read_colour() {
        char message[1024] = {};
        TIFFRGBAImage image;
        if (!TIFFRGBAImageBegin(&image, tiff_, 1, message)) return damaged(std::string(": ") + message);
        image.req_orientation = image.orientation;  // as stored
        film_.colour.resize(static_cast<std::size_t>(film_.width) * static_cast<std::size_t>(film_.height));
        const bool whole = TIFFRGBAImageGet(&image, film_.colour.data(), static_cast<std::uint32_t>(film_.width),
                                            static_cast<std::uint32_t>(film_.height)) == 1;
        TIFFRGBAImageEnd(&image);
        if (!whole) return damaged("");
        for (std::uint32_t& pixel : film_.colour)
            pixel = TIFFGetA(pixel) << 24 | TIFFGetR(pixel) << 16 | TIFFGetG(pixel) << 8 | TIFFGetB(pixel);
        return {};
    }

    void note_frames() {
        constexpr int most_frames = 1000;
        while (film_.header.frames < most_frames && TIFFReadDirectory(tiff_)) ++film_.header.frames;
    }

    TIFF* tiff_;
    Stream& stream_;
    std::size_t pixel_limit_;
    Film film_;
};

}  // namespace

Film decode_tiff(std::string_view bytes, std::size_t pixel_limit) {
    Stream stream{bytes, 0, {}};
    const Tiff tiff = opened(stream, pixel_limit);
    if (!tiff) return without_film("The TIFF picture's header is damaged (" + stream.message + ").");
    Film film = Reader(tiff.get(), stream, pixel_limit).film();
    film.header.format = "TIFF";
    return film;
}

}  // namespace tool
