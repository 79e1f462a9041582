// Where line images come from: pictures and drawings, by how dark their pixels are.
#pragma once

#include <cstddef>
#include <cstdint>

#include "framework/drawing.h"
#include "util/line_image.h"

namespace tool {

// Which pixels are line. A pixel's grey is 0.30 red + 0.59 green + 0.11 blue (the luma of television, ITU-R BT.601) in
// 256ths, cut to 0 to 255.
struct Threshold {
    int grey;          // lines are darker than this
    bool bright_line;  // lines are not darker, as on a film

    bool is_line(int red, int green, int blue) const {
        return ((77 * red + 150 * green + 29 * blue) / 256 < grey) != bright_line;
    }
};

// A picture in memory. Its pixels are one byte of grey, or three or four that begin with blue, green, red; rows come
// from the top, `stride` bytes apart.
struct PictureView {
    const std::uint8_t* pixels;
    int bytes_a_pixel;
    std::ptrdiff_t stride;
};

// Writes every pixel of the image, which has the size of the picture. False for pixels of another kind.
bool lines_of_picture(PictureView picture, Threshold threshold, LineImage image);

// The same from the surface's upper left corner. Where the surface has no pixel is paper; false when it has none at
// all.
bool lines_of_drawing(const CDC& surface, Threshold threshold, LineImage image);

}  // namespace tool
