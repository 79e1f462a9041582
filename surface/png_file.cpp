#include "surface/png_file.h"

#include <png.h>

#include <csetjmp>
#include <cstddef>
#include <utility>
#include <vector>

namespace tool {
namespace {

constexpr int effort = 2;  // of zlib's 1 to 9
constexpr double metre_per_inch = 0.0254;

struct Sink {
    std::string bytes;
    bool full = false;  // told at the end: nothing may be thrown through libpng
};

void append(png_structp png, png_bytep data, png_size_t size) {
    Sink& sink = *static_cast<Sink*>(png_get_io_ptr(png));
    try {
        sink.bytes.append(reinterpret_cast<const char*>(data), size);
    } catch (...) {
        sink.full = true;
    }
}

struct Size {
    int width, height;
    double dpi;
};

// Writes rows that `row_of` gives, from 0. libpng leaves it by a jump when something fails, so it owns nothing.
template <class RowOf>
bool write_all(png_structp png, png_infop info, const Size& size, int colours, const RowOf& row_of) {
    if (setjmp(png_jmpbuf(png))) return false;
    const auto pixels_a_metre = static_cast<png_uint_32>(size.dpi / metre_per_inch + 0.5);
    png_set_compression_level(png, effort);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_set_IHDR(png, info, static_cast<png_uint_32>(size.width), static_cast<png_uint_32>(size.height), 8, colours,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, pixels_a_metre, pixels_a_metre, PNG_RESOLUTION_METER);
    png_write_info(png, info);
    for (int y = 0; y < size.height; ++y) png_write_row(png, row_of(y));
    png_write_end(png, info);
    return true;
}

template <class RowOf>
std::string file_of(const Size& size, int colours, const RowOf& row_of) {
    Sink sink;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    bool written = false;
    if (info) {
        png_set_write_fn(png, &sink, append, nullptr);
        written = write_all(png, info, size, colours, row_of);
    }
    png_destroy_write_struct(&png, &info);
    return written && !sink.full ? std::move(sink.bytes) : std::string();
}

}  // namespace

std::string png_file(const std::uint32_t* pixels, int width, int height, std::ptrdiff_t stride, double dpi) {
    std::vector<png_byte> row(3 * static_cast<std::size_t>(width));
    return file_of({width, height, dpi}, PNG_COLOR_TYPE_RGB, [&](int y) {
        const std::uint32_t* const line = pixels + y * stride;
        for (int x = 0; x < width; ++x) {
            row[3 * x] = static_cast<png_byte>(line[x] >> 16);
            row[3 * x + 1] = static_cast<png_byte>(line[x] >> 8);
            row[3 * x + 2] = static_cast<png_byte>(line[x]);
        }
        return row.data();
    });
}

std::string grey_png_file(const std::uint8_t* pixels, int width, int height, double dpi) {
    return file_of({width, height, dpi}, PNG_COLOR_TYPE_GRAY,
                   [&](int y) { return pixels + static_cast<std::ptrdiff_t>(y) * width; });
}

}  // namespace tool
