// The constructions whose whole-pixel form computes something else than the double one. Results beyond 32 bits are
// the nearest bound.
#pragma once

#include "framework/plane.h"

namespace tool {

// Halves of odd differences are cut toward a.
CPoint pixel_midpoint(CPoint a, CPoint b);

// The foot of the perpendicular from p on the line a-b, rounded unless the line is vertical or horizontal.
CPoint pixel_foot(CPoint a, CPoint b, CPoint p);

// As stepped_toward.
CPoint pixel_toward(CPoint a, CPoint b, double radius);

// c moved by k times the vector from a to b, the step being cut toward zero.
CPoint pixel_moved(CPoint a, CPoint b, CPoint c, double k);

}  // namespace tool
