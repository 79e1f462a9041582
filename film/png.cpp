// libpng reports errors with longjmp, so nothing between setjmp and libpng may own anything.
#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstring>

#include "film/decoders.h"

namespace tool {
namespace {

struct Reader {
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::string_view rest;        // not read yet
    char message[80] = {};        // libpng's own
    std::vector<png_byte> bytes;  // of a row, of all rows where they are interlaced
    std::vector<png_bytep> rows;
    png_uint_32 row = 0;  // being read

    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
};

void take_bytes(png_structp png, png_bytep target, std::size_t count) {
    std::string_view& rest = static_cast<Reader*>(png_get_io_ptr(png))->rest;
    if (rest.size() < count) png_error(png, "it ends early");
    std::memcpy(target, rest.data(), count);
    rest.remove_prefix(count);
}

void fail(png_structp png, png_const_charp message) {
    Reader& reader = *static_cast<Reader*>(png_get_error_ptr(png));
    std::strncpy(reader.message, message, sizeof reader.message - 1);
    png_longjmp(png, 1);
}

void pass_over(png_structp, png_const_charp) {}

void note_header(const Reader& reader, FilmHeader& header) {
    constexpr double metre_per_inch = 0.0254;
    header.compression = "deflate";
    const png_uint_32 across = png_get_x_pixels_per_meter(reader.png, reader.info);
    const png_uint_32 down = png_get_y_pixels_per_meter(reader.png, reader.info);
    if (across > 0 && down > 0) header.resolution = Resolution{across * metre_per_inch, down * metre_per_inch};
}

// Grey comes with its depth, all else as four channels of 8 bits. Gives whether it is grey.
bool ask_for_samples(const Reader& reader) {
    const png_byte type = png_get_color_type(reader.png, reader.info);
    const png_byte depth = png_get_bit_depth(reader.png, reader.info);
    const bool transparent = png_get_valid(reader.png, reader.info, PNG_INFO_tRNS) != 0;
    const bool deep_with_alpha = type == PNG_COLOR_TYPE_GRAY_ALPHA && depth == 16;
    if ((type == PNG_COLOR_TYPE_GRAY && !transparent) || deep_with_alpha) {
        if (depth < 8) png_set_expand_gray_1_2_4_to_8(reader.png);
        if (deep_with_alpha) png_set_strip_alpha(reader.png);
        if (depth == 16 && std::endian::native == std::endian::little) png_set_swap(reader.png);
        return true;
    }
    png_set_expand(reader.png);
    png_set_scale_16(reader.png);
    png_set_gray_to_rgb(reader.png);
    png_set_add_alpha(reader.png, 0xFF, PNG_FILLER_AFTER);
    return false;
}

void store(const png_byte* row, bool grey, std::size_t at, Film& film) {
    const std::size_t width = static_cast<std::size_t>(film.width);
    if (grey && film.bits == 16) {
        std::memcpy(film.grey.data() + at, row, 2 * width);
    } else if (grey) {
        for (std::size_t x = 0; x < width; ++x) film.grey[at + x] = row[x];
    } else {
        for (std::size_t x = 0; x < width; ++x, row += 4)
            film.colour[at + x] = multiplied_by_alpha(row[0], row[1], row[2], row[3]);
    }
}

bool read(Reader& reader, Film& film, std::size_t pixel_limit) {
    if (setjmp(png_jmpbuf(reader.png))) return false;
    png_read_info(reader.png, reader.info);
    const png_uint_32 width = png_get_image_width(reader.png, reader.info);
    const png_uint_32 height = png_get_image_height(reader.png, reader.info);
    if (!film_size_allowed(width, height, pixel_limit)) {
        film.error = film_size_error(width, height);
        return true;
    }
    film.bits = png_get_bit_depth(reader.png, reader.info) == 16 ? 16 : 8;
    note_header(reader, film.header);
    const bool grey = ask_for_samples(reader);
    const bool interlaced = png_set_interlace_handling(reader.png) > 1;
    png_read_update_info(reader.png, reader.info);
    const std::size_t stride = png_get_rowbytes(reader.png, reader.info);
    reader.bytes.resize(interlaced ? stride * height : stride);
    if (grey) {
        film.grey.resize(std::size_t{width} * height);
    } else {
        film.colour.resize(std::size_t{width} * height);
    }
    film.width = static_cast<int>(width), film.height = static_cast<int>(height);
    if (interlaced) {
        for (png_uint_32 y = 0; y < height; ++y) reader.rows.push_back(reader.bytes.data() + stride * y);
        png_read_image(reader.png, reader.rows.data());
    }
    for (; reader.row < height; ++reader.row) {
        if (!interlaced) png_read_row(reader.png, reader.bytes.data(), nullptr);
        store(interlaced ? reader.rows[reader.row] : reader.bytes.data(), grey, std::size_t{width} * reader.row, film);
    }
    png_read_end(reader.png, nullptr);
    return true;
}

}  // namespace

Film decode_png(std::string_view bytes, std::size_t pixel_limit) {
    Film film;
    film.header.format = "PNG";
    Reader reader;
    reader.rest = bytes;
    reader.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &reader, fail, pass_over);
    if (reader.png) reader.info = png_create_info_struct(reader.png);
    if (!reader.info) return without_film("There is not enough memory for the picture.");
    png_set_read_fn(reader.png, &reader, take_bytes);
    png_set_user_limits(reader.png, film_side_limit, film_side_limit);
    const bool whole = read(reader, film, pixel_limit);
    if (!film.error.empty()) return without_film(film.error);
    if (whole) return film;
    const std::string place =
        film ? " at row " + std::to_string(reader.row) + " of " + std::to_string(film.height) : " in its header";
    return without_film("The PNG picture is damaged or ends early" + place + " (" + reader.message + ").");
}

}  // namespace tool
