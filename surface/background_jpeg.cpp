// libjpeg reports errors with longjmp, so nothing between setjmp and libjpeg may own anything.
#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>

#include <jerror.h>

#include <bit>

#include "surface/picture_format.h"

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

bool fits_a_page(const jpeg_decompress_struct& cinfo) {
    return cinfo.num_components == 1 || cinfo.num_components == 3;
}

// Multiplies the inks of a CMYK pixel out; Adobe's files store them inverted, and few others have any.
std::uint32_t without_black(const JSAMPLE* cmyk) {
    const auto channel = [&](int i) { return static_cast<std::uint32_t>(cmyk[i] * cmyk[3] / 255); };
    return 0xFF000000u | channel(0) << 16 | channel(1) << 8 | channel(2);
}

void decode(Reader& reader, Background& picture, std::vector<JSAMPLE>& row, std::size_t pixel_limit) {
    jpeg_decompress_struct& cinfo = reader.cinfo;
    jpeg_read_header(&cinfo, TRUE);
    if (!background_size_allowed(cinfo.image_width, cinfo.image_height, pixel_limit)) {
        picture.error = size_error(cinfo.image_width, cinfo.image_height);
        return;
    }
    const bool four_inks = cinfo.jpeg_color_space == JCS_CMYK || cinfo.jpeg_color_space == JCS_YCCK;
    cinfo.out_color_space = four_inks                                    ? JCS_CMYK
                            : std::endian::native == std::endian::little ? JCS_EXT_BGRA
                                                                         : JCS_EXT_ARGB;
    jpeg_start_decompress(&cinfo);
    const std::size_t width = cinfo.output_width;
    picture.pixels.resize(width * cinfo.output_height);
    row.resize(width * 4);
    while (cinfo.output_scanline < cinfo.output_height) {
        std::uint32_t* const target = picture.pixels.data() + cinfo.output_scanline * width;
        JSAMPROW line = four_inks ? row.data() : reinterpret_cast<JSAMPROW>(target);
        jpeg_read_scanlines(&cinfo, &line, 1);
        if (!four_inks) continue;
        for (std::size_t x = 0; x < width; ++x) target[x] = without_black(row.data() + 4 * x);
    }
    jpeg_finish_decompress(&cinfo);
    picture.width = static_cast<int>(width), picture.height = static_cast<int>(cinfo.output_height);
}

}  // namespace

Background decode_jpeg(std::string_view bytes, std::size_t pixel_limit) {
    Background picture;
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
        decode(reader, picture, row, pixel_limit);
        if (picture && fits_a_page(reader.cinfo)) picture.jpeg = bytes;
    } else {
        picture.error = "The JPEG picture is damaged or of a kind that can't be read.";
    }
    if (reader.ended_early) picture.error = "The JPEG picture ends early.";
    return picture.error.empty() ? picture : without_picture(picture.error);
}

}  // namespace tool
