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

// libpng leaves it by a jump when something fails, so it owns nothing.
bool write_all(png_structp png, png_infop info, const std::uint32_t* pixels, int width, int height,
               std::ptrdiff_t stride, png_uint_32 pixels_a_metre, png_bytep row) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_compression_level(png, effort);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, pixels_a_metre, pixels_a_metre, PNG_RESOLUTION_METER);
    png_write_info(png, info);
    for (int y = 0; y < height; ++y) {
        const std::uint32_t* const line = pixels + y * stride;
        for (int x = 0; x < width; ++x) {
            row[3 * x] = static_cast<png_byte>(line[x] >> 16);
            row[3 * x + 1] = static_cast<png_byte>(line[x] >> 8);
            row[3 * x + 2] = static_cast<png_byte>(line[x]);
        }
        png_write_row(png, row);
    }
    png_write_end(png, info);
    return true;
}

}  // namespace

std::string png_file(const std::uint32_t* pixels, int width, int height, std::ptrdiff_t stride, double dpi) {
    Sink sink;
    std::vector<png_byte> row(3 * static_cast<std::size_t>(width));
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    bool written = false;
    if (info) {
        png_set_write_fn(png, &sink, append, nullptr);
        written = write_all(png, info, pixels, width, height, stride,
                            static_cast<png_uint_32>(dpi / metre_per_inch + 0.5), row.data());
    }
    png_destroy_write_struct(&png, &info);
    return written && !sink.full ? std::move(sink.bytes) : std::string();
}

}  // namespace tool
