// Construction lines: the parallel or the perpendicular to a line through a point, as long as a rectangle of the image
// is high or wide.
#pragma once

#include "framework/plane.h"
#include "geometry/line.h"

namespace tool {

// Whole image pixels. A steep line ends on the rectangle's top and bottom, any other on its left and right; an end may
// thus lie outside the rectangle beside it.
struct Segment {
    CPoint first, last;

    // The end further right; the first one when both are equally far.
    CPoint right_end() const { return last.x > first.x ? last : first; }
};

Segment parallel_through(Vec2 p, const Line& line, const RECT& bounds);

// A line without length counts as vertical.
Segment perpendicular_through(Vec2 p, const Line& line, const RECT& bounds);

}  // namespace tool
