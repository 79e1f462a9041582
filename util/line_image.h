// Line images: traced lines as pixels, changed in place.
//
// A line image is width * height bytes, rows from the top without gaps. 255 is line, 0 is paper; any other value counts
// as neither and stays, but for the marks 50, 100 and 200 where a function says so. The outermost rows and columns are
// looked at and never changed, so that below 3 pixels a side nothing happens. No function allocates.
//
// Kept: of the eight neighbours the one above counts twice and the one to the left does not count at all. Line images
// that hosts have stored must come out pixel for pixel the same.
#pragma once

#include <cstdint>

namespace tool {

struct LineImage {
    std::uint8_t* pixels;
    int width, height;
};

enum class Neighbours { four, eight };  // four: above (twice), below, right

// One step: paper with a neighbour of line becomes line. 100 becomes line, too.
void widen_lines(LineImage image, Neighbours neighbours);

// One step: line with a neighbour of paper becomes paper. 100 becomes paper, too.
void narrow_lines(LineImage image, Neighbours neighbours);

// Thins lines to one pixel. 50 and 100 become line, 200 is judged like the edge of a line.
void thin_lines(LineImage image);

}  // namespace tool
