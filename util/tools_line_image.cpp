// CTools: line images.
#include <algorithm>
#include <new>

#include "Tools.h"
#include "platform/system.h"
#include "util/caller_text.h"
#include "util/line_image.h"
#include "util/line_image_file.h"
#include "util/line_image_source.h"

using tool::LineImage;

namespace {

bool has_pixels(LineImage image) {
    return image.pixels && image.width > 0 && image.height > 0;
}

tool::Neighbours neighbours(int connectivity) {
    return connectivity == 4 ? tool::Neighbours::four : tool::Neighbours::eight;
}

bool write(const char* path, LineImage image) try {
    return tool::write_file_atomically(path, tool::file_of(image));
} catch (const std::bad_alloc&) {
    return false;
}

bool make(CDC* dc, tool::Threshold threshold, LineImage image) {
    return dc && has_pixels(image) && tool::lines_of_drawing(*dc, threshold, image);
}

bool make(tool::PictureView picture, tool::Threshold threshold, LineImage image) {
    return picture.pixels && has_pixels(image) && tool::lines_of_picture(picture, threshold, image);
}

template <class Source>
int make_line_image(Source source, tool::Threshold threshold, LineImage image, const char* path) {
    return make(source, threshold, image) && (!path || write(path, image));
}

template <class Source>
int make_thin_image(Source source, tool::Threshold threshold, LineImage image, const char* path) {
    if (!make(source, threshold, image)) return 0;
    tool::thin_lines(image);
    return !path || write(path, image);
}

}  // namespace

void CTools::Dira(unsigned char* image, int width, int height, int connectivity) {
    const LineImage lines{image, width, height};
    if (has_pixels(lines)) tool::widen_lines(lines, neighbours(connectivity));
}

void CTools::Eros(unsigned char* image, int width, int height, int connectivity) {
    const LineImage lines{image, width, height};
    if (has_pixels(lines)) tool::narrow_lines(lines, neighbours(connectivity));
}

void CTools::Linear(CDC*, unsigned char* image, int width, int height) {
    const LineImage lines{image, width, height};
    if (has_pixels(lines)) tool::thin_lines(lines);
}

int CTools::MakeLineImg(CDC* dc, unsigned char* image, int width, int height, int threshold, int bright,
                        const char* path) {
    return make_line_image(dc, {threshold, bright != 0}, {image, width, height}, path);
}

int CTools::MakeLineImg(const unsigned char* pixels, int bytesPerPixel, int stride, unsigned char* image, int width,
                        int height, int threshold, int bright, const char* path) {
    return make_line_image(tool::PictureView{pixels, bytesPerPixel, stride}, {threshold, bright != 0},
                           {image, width, height}, path);
}

int CTools::MakeLinear(CDC* dc, unsigned char* image, int width, int height, int threshold, int bright,
                       const char* path) {
    return make_thin_image(dc, {threshold, bright != 0}, {image, width, height}, path);
}

int CTools::MakeLinear(const unsigned char* pixels, int bytesPerPixel, int stride, unsigned char* image, int width,
                       int height, int threshold, int bright, const char* path) {
    return make_thin_image(tool::PictureView{pixels, bytesPerPixel, stride}, {threshold, bright != 0},
                           {image, width, height}, path);
}

int CTools::SetBuff(const char* path, unsigned char* image, unsigned long size, int* width, int* height) try {
    const auto bytes = tool::read_file(tool::or_empty(path));
    const auto file = bytes ? tool::line_image_file(*bytes) : std::nullopt;
    if (!file || (image && file->pixels.size() > size)) return 0;
    if (image) std::ranges::copy(file->pixels, image);
    if (width) *width = file->width;
    if (height) *height = file->height;
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}

int CTools::WriteBuff(const char* path, const unsigned char* image, int width, int height) {
    const LineImage lines{const_cast<unsigned char*>(image), width, height};
    return has_pixels(lines) && write(tool::or_empty(path), lines);
}
