#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#ifdef TOOL_FILM_ZLIB
#include <zlib.h>
#endif

#include "film/decoders.h"
#include "film/dicom_header.h"
#include "film/dicom_pixels.h"
#include "film/dicom_tags.h"

namespace tool {
namespace {

constexpr std::size_t preamble = 128;
constexpr std::string_view magic = "DICM";
constexpr DicomCoding meta_coding{true, false};

Film damaged(const std::string& what) {
    return without_film("The DICOM film is damaged: " + what + ".");
}

Film unreadable(const std::string& what) {
    return without_film("The DICOM film can't be read: " + what + ".");
}

bool is_capital(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

bool is_meta(DicomTag tag) {
    return tag == dicom_tag::transfer_syntax_uid;
}

// Where the group of elements about the file itself ends, that begins at `from`: all of group 2.
std::size_t behind_meta(std::string_view bytes, std::size_t from) {
    constexpr std::string_view group("\x02\x00", 2);
    while (bytes.size() - from >= 8 && bytes.substr(from, 2) == group) {
        const bool longer = std::string_view("OBUNUT").find(bytes.substr(from + 4, 2)) % 2 == 0;
        if (longer && bytes.size() - from < 12) break;
        const std::size_t length =
            longer ? meta_coding.u32(bytes.data() + from + 8) : meta_coding.u16(bytes.data() + from + 6);
        const std::size_t header = longer ? 12 : 8;
        if (length > bytes.size() - from - header) break;
        from += header + length;
    }
    return from;
}

#ifdef TOOL_FILM_ZLIB
// A raw deflate stream, up to `limit` bytes of content. Empty when it is damaged or holds more.
std::string inflated(std::string_view packed, std::size_t limit) {
    z_stream stream{};
    if (packed.size() > std::numeric_limits<uInt>::max() || inflateInit2(&stream, -MAX_WBITS) != Z_OK) return {};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    std::string content;
    int state = Z_OK;
    while (state == Z_OK && content.size() < limit) {
        char block[1 << 16];
        stream.next_out = reinterpret_cast<Bytef*>(block);
        stream.avail_out = sizeof block;
        state = inflate(&stream, Z_NO_FLUSH);
        content.append(block, sizeof block - stream.avail_out);
    }
    inflateEnd(&stream);
    return state == Z_STREAM_END ? content : std::string();
}
#endif

// What is wrong with the description of the pixels; "" when it is understood.
std::string describe(const DicomDataSet& data, DicomPicture& picture) {
    using namespace dicom_tag;
    const auto number = [&](DicomTag tag, int otherwise) {
        return int{data.number(tag).value_or(static_cast<std::uint16_t>(otherwise))};
    };
    for (const DicomTag needed : {rows, columns, bits_allocated, pixel_data})
        if (!data.find(needed)) return "it has no " + text_of(needed);
    picture.rows = number(rows, 0);
    picture.columns = number(columns, 0);
    picture.samples = number(samples_per_pixel, 1);
    picture.allocated = number(bits_allocated, 8);
    picture.stored = number(bits_stored, picture.allocated);
    picture.high_bit = number(high_bit, picture.stored - 1);
    picture.is_signed = number(pixel_representation, 0) == 1;
    picture.planes = number(planar_configuration, 0) == 1;
    picture.frames = static_cast<int>(std::clamp(data.decimal(number_of_frames).value_or(1), 1.0, 1e6));
    picture.photometric = data.text(photometric_interpretation);
    if (picture.photometric.empty()) picture.photometric = picture.samples == 1 ? "MONOCHROME2" : "RGB";
    if (picture.allocated != 8 && picture.allocated != 16)
        return "its samples take " + std::to_string(picture.allocated) + " bits, where 8 and 16 are read";
    if (picture.stored < 1 || picture.stored > picture.allocated || picture.high_bit >= picture.allocated ||
        picture.high_bit < picture.stored - 1)
        return "its samples are to have " + std::to_string(picture.stored) + " bits below bit " +
               std::to_string(picture.high_bit) + " of " + std::to_string(picture.allocated);
    const bool grey = picture.photometric.starts_with("MONOCHROME");
    if (picture.samples != (grey ? 1 : 3) || (!grey && picture.allocated != 8))
        return picture.photometric + " with " + std::to_string(picture.samples) + " samples of " +
               std::to_string(picture.allocated) + " bits is not read";
    return {};
}

// The first picture's samples as they stand in an uncompressed file, in the machine's byte order.
std::string copy_pixels(const DicomElement& pixels, const DicomPicture& picture, std::uint8_t* to) {
    const std::size_t size = picture.frame_bytes();
    if (pixels.value.size() < size)
        return "its pixels have " + std::to_string(pixels.value.size()) + " bytes, where " + std::to_string(size) +
               " are needed, at byte " + std::to_string(pixels.at);
    std::memcpy(to, pixels.value.data(), size);
    const bool machine_is_big = std::endian::native == std::endian::big;
    if (picture.allocated == 16 && pixels.coding.big_endian != machine_is_big)
        for (std::size_t i = 0; i + 1 < size; i += 2) std::swap(to[i], to[i + 1]);
    return {};
}

constexpr bool is_built([[maybe_unused]] DicomPacking packing) {
#ifndef TOOL_FILM_DCMTK
    if (packing == DicomPacking::dcmtk) return false;
#endif
#ifndef TOOL_FILM_JPEG2000
    if (packing == DicomPacking::jpeg2000) return false;
#endif
    return true;
}

std::string unpack(const TransferSyntax& syntax, const DicomElement& pixels, DicomPicture& picture,
                   const DicomRoom& room) {
    if (!pixels.no_length) {
        if (syntax.packing == DicomPacking::none) return copy_pixels(pixels, picture, room());
        return "its pixels are to be compressed, but lie there as one value, at byte " + std::to_string(pixels.at);
    }
    std::string error;
    const std::vector<std::string_view> fragments = dicom_items(pixels, &error);
    if (!error.empty()) return error;
    if (fragments.size() < 2) return "its pixels have no fragment, at byte " + std::to_string(pixels.at);
    switch (syntax.packing) {
        case DicomPacking::rle: error = unpack_rle(fragments, picture, room()); break;
#ifdef TOOL_FILM_DCMTK
        case DicomPacking::dcmtk: error = unpack_by_dcmtk(syntax, fragments, picture, room()); break;
#endif
#ifdef TOOL_FILM_JPEG2000
        case DicomPacking::jpeg2000: error = unpack_jpeg2000(fragments, picture, room); break;
#endif
        default: return "its pixels lie in fragments, but are to be uncompressed";
    }
    if (error.empty()) return {};
    return std::string("its pixels (") + syntax.compression + "), at byte " + std::to_string(pixels.at) + ": " + error;
}

// Brings samples, of which each may stand anywhere in its 8 or 16 bits, to a count from the lowest value, in place.
void make_grey(const DicomPicture& picture, Film& film) {
    const int shift = picture.high_bit + 1 - picture.stored;
    const unsigned mask = (1u << picture.stored) - 1, half = picture.is_signed ? 1u << (picture.stored - 1) : 0;
    film.bits = picture.stored;
    film.rule.lowest = -static_cast<int>(half);
    if (shift == 0 && mask == 0xFFFF && half == 0) return;
    for (std::uint16_t& sample : film.grey) sample = static_cast<std::uint16_t>((sample >> shift & mask) ^ half);
}

std::uint32_t rgb_of_ybr(int y, int cb, int cr) {
    const auto channel = [](double value) { return static_cast<std::uint32_t>(std::clamp(value + 0.5, 0.0, 255.0)); };
    return 0xFF000000u | channel(y + 1.402 * (cr - 128)) << 16 |
           channel(y - 0.344136 * (cb - 128) - 0.714136 * (cr - 128)) << 8 | channel(y + 1.772 * (cb - 128));
}

// "" or what is wrong.
std::string make_colour(const DicomPicture& picture, const std::vector<std::uint8_t>& samples, Film& film) {
    const bool ybr = picture.photometric == "YBR_FULL";
    if (!ybr && picture.photometric != "RGB") return picture.photometric + " is not read";
    const std::size_t pixels = samples.size() / 3, step = picture.planes ? 1 : 3, channel = picture.planes ? pixels : 1;
    film.colour.resize(pixels);
    for (std::size_t i = 0; i < pixels; ++i) {
        const std::uint8_t* const at = samples.data() + i * step;
        const std::uint32_t one = at[0], two = at[channel], three = at[2 * channel];
        film.colour[i] =
            ybr ? rgb_of_ybr(at[0], at[channel], at[2 * channel]) : 0xFF000000u | one << 16 | two << 8 | three;
    }
    return {};
}

Film film_of(const DicomDataSet& data, const TransferSyntax& syntax, std::size_t pixel_limit, DicomPart part) {
    if (!data.error().empty()) return damaged(data.error());
    Film film;
    read_header(data, film.header);
    DicomPicture picture;
    const std::string not_read = describe(data, picture);
    film.header.frames = picture.frames;
    if (part == DicomPart::header) {
        if (not_read.empty()) film.width = picture.columns, film.height = picture.rows;
        return film;
    }
    if (!not_read.empty()) return unreadable(not_read);
    if (!is_built(syntax.packing))
        return unreadable(std::string("this build does without a library for ") + syntax.compression);
    const auto columns = static_cast<std::uint64_t>(picture.columns), rows = static_cast<std::uint64_t>(picture.rows);
    if (!film_size_allowed(columns, rows, pixel_limit)) return without_film(film_size_error(columns, rows));

    film.header.compression = syntax.compression;
    const DicomElement& pixels = *data.find(dicom_tag::pixel_data);
    // An uncompressed film must have its bytes before memory is taken for them.
    if (syntax.packing == DicomPacking::none && pixels.value.size() < picture.frame_bytes())
        return damaged(copy_pixels(pixels, picture, nullptr));
    std::string error;
    if (picture.samples == 1 && picture.allocated == 16) {
        error = unpack(syntax, pixels, picture, [&] {
            film.grey.resize(static_cast<std::size_t>(columns * rows));
            return reinterpret_cast<std::uint8_t*>(film.grey.data());
        });
        if (error.empty()) make_grey(picture, film);
    } else {
        std::vector<std::uint8_t> samples;
        error = unpack(syntax, pixels, picture, [&] {
            samples.resize(picture.frame_bytes());
            return samples.data();
        });
        if (error.empty() && picture.samples == 1) {
            film.grey.assign(samples.begin(), samples.end());
            make_grey(picture, film);
        } else if (error.empty()) {
            error = make_colour(picture, samples, film);
        }
    }
    if (!error.empty()) return damaged(error);
    film.width = picture.columns, film.height = picture.rows;
    if (picture.samples == 1) read_grey_rule(data, film);
    return film;
}

}  // namespace

bool begins_as_dicom(std::string_view bytes) {
    if (bytes.size() >= preamble + magic.size() && bytes.substr(preamble, magic.size()) == magic) return true;
    // Old files begin with their first element, of group 2 or 8, with or without its type.
    if (bytes.size() < 16 || (bytes[0] != 2 && bytes[0] != 8) || bytes[1] != 0 || bytes[3] != 0) return false;
    return (is_capital(bytes[4]) && is_capital(bytes[5])) || (bytes[6] == 0 && bytes[7] == 0);
}

Film decode_dicom(std::string_view bytes, std::size_t pixel_limit, DicomPart part) {
    const bool has_preamble = bytes.size() > preamble && bytes.substr(preamble, magic.size()) == magic;
    const std::size_t meta = has_preamble ? preamble + magic.size() : 0, begin = behind_meta(bytes, meta);
    const std::string uid =
        DicomDataSet(bytes.substr(0, begin), meta, meta_coding, is_meta).text(dicom_tag::transfer_syntax_uid);
    // A file that does not say how it is written shows it.
    const bool shows_types = bytes.size() >= begin + 6 && is_capital(bytes[begin + 4]) && is_capital(bytes[begin + 5]);
    const TransferSyntax* const syntax = transfer_syntax(!uid.empty()  ? uid
                                                         : shows_types ? "1.2.840.10008.1.2.1"
                                                                       : "1.2.840.10008.1.2");
    if (!syntax) return unreadable("its transfer syntax, " + uid.substr(0, 64) + ", is not known");
    Film film;
    const bool with_pixels = part == DicomPart::film;
    if (syntax->deflated) {
#ifdef TOOL_FILM_ZLIB
        const std::string content = inflated(bytes.substr(begin), 16 * pixel_limit + 1'000'000);
        if (content.empty()) return damaged("its data set can't be inflated, from byte " + std::to_string(begin));
        film = film_of(DicomDataSet(content, 0, syntax->coding, dicom_tag::is_read, with_pixels), *syntax, pixel_limit,
                       part);
#else
        return unreadable("this build does without zlib");
#endif
    } else {
        film = film_of(DicomDataSet(bytes, begin, syntax->coding, dicom_tag::is_read, with_pixels), *syntax, pixel_limit,
                       part);
    }
    film.header.format = "DICOM";
    return film;
}

}  // namespace tool
