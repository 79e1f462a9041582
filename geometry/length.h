// Measured lengths and areas. A scale is the size of a pixel, so that results are in its unit (mm).
#pragma once

#include "geometry/line.h"
#include "geometry/vec2.h"

namespace tool {

// From p to its perpendicular foot on the line.
double distance_to_line(Vec2 p, const Line& line, double scale);

enum class Sign { unsigned_length, along_reference };

// The length of the projection of c-d onto the reference line; 0.0 when the feet of c and d are the same.
// along_reference: negative when the projection runs against the reference.
// Kept: a vertical reference gives 0.0 for any c and d, as in stored measurements.
double projected_length(const Line& reference, Vec2 c, Vec2 d, double scale, Sign sign);

// By Heron's rule.
double triangle_area(Vec2 a, Vec2 b, Vec2 c, double scale);

}  // namespace tool
