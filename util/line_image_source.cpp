#include "util/line_image_source.h"

namespace tool {
namespace {

constexpr std::uint8_t line = 255, paper = 0;

template <class IsLine>
void fill(LineImage image, IsLine is_line) {
    for (int y = 0; y < image.height; ++y) {
        std::uint8_t* const row = image.pixels + static_cast<std::ptrdiff_t>(y) * image.width;
        for (int x = 0; x < image.width; ++x) row[x] = is_line(x, y) ? line : paper;
    }
}

}  // namespace

bool lines_of_picture(PictureView picture, Threshold threshold, LineImage image) {
    const int bytes = picture.bytes_a_pixel;
    if (bytes != 1 && bytes != 3 && bytes != 4) return false;
    const int green = bytes == 1 ? 0 : 1, red = bytes == 1 ? 0 : 2;
    fill(image, [&](int x, int y) {
        const std::uint8_t* const pixel = picture.pixels + y * picture.stride + static_cast<std::ptrdiff_t>(x) * bytes;
        return threshold.is_line(pixel[red], pixel[green], pixel[0]);
    });
    return true;
}

bool lines_of_drawing(const CDC& surface, Threshold threshold, LineImage image) {
    bool any = false;
    fill(image, [&](int x, int y) {
        const COLORREF pixel = surface.GetPixel(x, y);
        if (pixel == CLR_INVALID) return false;
        any = true;
        return threshold.is_line(GetRValue(pixel), GetGValue(pixel), GetBValue(pixel));
    });
    return any;
}

}  // namespace tool
