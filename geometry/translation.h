// Points moved by a vector, along a line, toward a point, and turned about a point.
// Angles are degrees, clockwise on the screen (from +x toward +y). A scale is mm a pixel.
#pragma once

#include "geometry/line.h"
#include "geometry/vec2.h"

namespace tool {

// c moved by the vector from a to b.
Vec2 moved_by(Vec2 a, Vec2 b, Vec2 c);

// The direction of a line is taken in the quadrant of a seen from b, where atan is unambiguous, and mirrored back by
// the signs.
struct Quadrant {
    double sx, sy, rise;
};
inline Quadrant quadrant_of(const Line& line) {
    const auto& [a, b] = line;
    const double sx = b.x < a.x ? 1.0 : -1.0, sy = b.y < a.y ? 1.0 : -1.0;
    return {sx, sy, sx == sy ? a.y - b.y : b.y - a.y};
}

// The point at `distance` / `scale` pixels from c, in the direction from a to b turned by `angle_deg`.
// Scale 0 gives b; with a == b the direction is straight down. Scale 1 takes the distance in pixels.
Vec2 translated_along(Vec2 a, Vec2 b, Vec2 c, double distance, double angle_deg, double scale);

// b turned about a by `angle_deg`. Scale 0 gives a.
Vec2 turned_about(Vec2 a, Vec2 b, double angle_deg, double scale);

// The same, but landing at distance |ab| * scale, not |ab|, from a.
Vec2 turned_about_scaled(Vec2 a, Vec2 b, double angle_deg, double scale);

// The point about `radius` pixels from a toward b. The steps along x and y are cut to whole pixels.
Vec2 stepped_toward(Vec2 a, Vec2 b, double radius);

}  // namespace tool
