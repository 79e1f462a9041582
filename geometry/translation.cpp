#include "geometry/translation.h"

#include <cmath>

#include "geometry/line.h"
#include "platform/arithmetic.h"
#include "platform/numbers.h"

namespace tool {

Vec2 moved_by(Vec2 a, Vec2 b, Vec2 c) {
    return b - a + c;
}

Vec2 translated_along(Vec2 a, Vec2 b, Vec2 c, double distance, double angle_deg, double scale) {
    if (scale == 0) return b;
    const auto [sx, sy, rise] = quadrant_of({a, b});
    const double axis = Line{a, b}.vertical() ? -short_half_pi : tool::atan(rise / (b.x - a.x));
    const double turn = radians_from_degrees(angle_deg);
    const double t = sx == sy ? short_pi + axis - turn : short_pi + axis + turn;
    return {c.x + tool::cos(t) * distance / scale * sx, c.y - tool::sin(t) * distance / scale * sy};
}

namespace {

// A point on the far side of a, away from b: from there, b lies straight ahead beyond a.
Vec2 opposite(Vec2 a, Vec2 b, double scale) {
    return translated_along(b, a, a, 100.0, 0.0, scale);
}

double full_turn(double angle_deg) {
    return angle_deg < 0 ? angle_deg + 360.0 : angle_deg;
}

}  // namespace

Vec2 turned_about(Vec2 a, Vec2 b, double angle_deg, double scale) {
    return translated_along(opposite(a, b, scale), a, a, distance(a, b) * scale, full_turn(angle_deg), scale);
}

// Kept: the last step takes the scaled length as pixels. Callers rely on the difference from turned_about.
Vec2 turned_about_scaled(Vec2 a, Vec2 b, double angle_deg, double scale) {
    return translated_along(opposite(a, b, scale), a, a, distance(a, b) * scale, full_turn(angle_deg), 1.0);
}

// Kept: offsets are cut to whole pixels for fractional points too; stored constructions were made in whole steps.
Vec2 stepped_toward(Vec2 a, Vec2 b, double radius) {
    const Line line{a, b};
    const double sx = b.x < a.x ? -1.0 : 1.0, sy = b.y < a.y ? -1.0 : 1.0;
    if (line.vertical()) return {a.x, a.y + truncated(radius) * sy};
    if (line.horizontal()) return {a.x + truncated(radius) * sx, a.y};
    const double m = line.slope();
    const double ex = std::sqrt(radius * radius / (m * m + 1.0));
    const double ey = std::sqrt(radius * radius - ex * ex);
    return {a.x + truncated(ex) * sx, a.y + truncated(ey) * sy};
}

}  // namespace tool
