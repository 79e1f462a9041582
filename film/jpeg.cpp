// libjpeg reports errors with longjmp, so nothing between setjmp and libjpeg may own anything.
#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>

#include <jerror.h>

#include <bit>

#include "film/decoders.h"

namespace tool {

namespace {

struct Reader {
    jpeg_decompress_struct cinfo;
    jpeg_error_mgr errors;
    jpeg_progress_mgr progress;
    std::jmp_buf failed;
    bool ended_early = false;

    ~Reader() { jpeg_destroy_decompress(&cinfo); }
};

Reader& reader_of(j_common_ptr cinfo) {
    return *static_cast<Reader*>(cinfo->client_data);
}

[[noreturn]] void fail(j_common_ptr cinfo) {
    std::longjmp(reader_of(cinfo).failed, 1);
}

// Of warnings only the one that pixels are missing matters; cameras and archives leave many harmless ones.
void note_warning(j_common_ptr cinfo, int level) {
    if (level < 0 && cinfo->err->msg_code == JWRN_JPEG_EOF) reader_of(cinfo).ended_early = true;
}

// A small file can hold thousands of passes over a large picture, each of which takes its full time.
void bound_passes(j_common_ptr cinfo) {
    constexpr int pass_limit = 200;
    if (reader_of(cinfo).cinfo.input_scan_number > pass_limit) fail(cinfo);
}

// What a page may take as it is. It would show the inks of others inverted.
bool fits_a_page(const jpeg_decompress_struct& cinfo) {
    return cinfo.num_components == 1 || cinfo.num_components == 3;
}

// Multiplies the inks of a CMYK pixel out; Adobe's files store them inverted, and few others have any.
std::uint32_t without_black(const JSAMPLE* cmyk) {
    const auto channel = [&](int i) { return static_cast<std::uint32_t>(cmyk[i] * cmyk[3] / 255); };
    return 0xFF000000u | channel(0) << 16 | channel(1) << 8 | channel(2);
}

void note_header(const jpeg_decompress_struct& cinfo, FilmHeader& header) {
    header.compression = cinfo.progressive_mode ? "JPEG progressive" : "JPEG";
    constexpr double cm_per_inch = 2.54;
    const double unit = cinfo.density_unit == 1 ? 1 : cinfo.density_unit == 2 ? cm_per_inch : 0;
    if (cinfo.saw_JFIF_marker && unit > 0 && cinfo.X_density > 0 && cinfo.Y_density > 0)
        header.resolution = Resolution{cinfo.X_density * unit, cinfo.Y_density * unit};
}

void decode(Reader& reader, Film& film, std::vector<JSAMPLE>& row, std::size_t pixel_limit) {
    jpeg_decompress_struct& cinfo = reader.cinfo;
    jpeg_read_header(&cinfo, TRUE);
    if (!film_size_allowed(cinfo.image_width, cinfo.image_height, pixel_limit)) {
        film.error = film_size_error(cinfo.image_width, cinfo.image_height);
        return;
    }
    note_header(cinfo, film.header);
    const bool grey = cinfo.jpeg_color_space == JCS_GRAYSCALE;
    const bool four_inks = cinfo.jpeg_color_space == JCS_CMYK || cinfo.jpeg_color_space == JCS_YCCK;
    cinfo.out_color_space = grey                                         ? JCS_GRAYSCALE
                            : four_inks                                  ? JCS_CMYK
                            : std::endian::native == std::endian::little ? JCS_EXT_BGRA
                                                                         : JCS_EXT_ARGB;
    jpeg_start_decompress(&cinfo);
    const std::size_t width = cinfo.output_width, pixels = width * cinfo.output_height;
    if (grey) {
        film.grey.resize(pixels);
    } else {
        film.colour.resize(pixels);
    }
    row.resize(width * 4);
    while (cinfo.output_scanline < cinfo.output_height) {
        const std::size_t at = cinfo.output_scanline * width;
        const bool to_row = grey || four_inks;
        JSAMPROW line = to_row ? row.data() : reinterpret_cast<JSAMPROW>(film.colour.data() + at);
        jpeg_read_scanlines(&cinfo, &line, 1);
        if (grey) {
            for (std::size_t x = 0; x < width; ++x) film.grey[at + x] = row[x];
        } else if (four_inks) {
            for (std::size_t x = 0; x < width; ++x) film.colour[at + x] = without_black(row.data() + 4 * x);
        }
    }
    jpeg_finish_decompress(&cinfo);
    film.width = static_cast<int>(width), film.height = static_cast<int>(cinfo.output_height);
}

// The first line that was not read, for messages.
std::string place_in(const jpeg_decompress_struct& cinfo) {
    if (cinfo.output_height == 0) return " in its header";
    return " at row " + std::to_string(cinfo.output_scanline) + " of " + std::to_string(cinfo.output_height);
}

}  // namespace

Film decode_jpeg(std::string_view bytes, std::size_t pixel_limit) {
    Film film;
    film.header.format = "JPEG";
    std::vector<JSAMPLE> row;
    Reader reader{};
    reader.cinfo.err = jpeg_std_error(&reader.errors);
    reader.cinfo.client_data = &reader;
    reader.errors.error_exit = fail;
    reader.errors.emit_message = note_warning;
    reader.progress.progress_monitor = bound_passes;
    if (setjmp(reader.failed) == 0) {
        jpeg_create_decompress(&reader.cinfo);
        reader.cinfo.progress = &reader.progress;
        jpeg_mem_src(&reader.cinfo, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        decode(reader, film, row, pixel_limit);
        if (film && fits_a_page(reader.cinfo)) film.jpeg = bytes;
    } else {
        film.error = "The JPEG picture is damaged or of a kind that can't be read" + place_in(reader.cinfo) + ".";
    }
    if (reader.ended_early) film.error = "The JPEG picture ends early.";
    return film.error.empty() ? film : without_film(film.error);
}

}  // namespace tool
