#include "geometry/length.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace tool {

namespace {

bool same_bits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Kept: compared as bytes, so that equal NaN feet give 0.0 and -0.0 differs from 0.0.
bool same_bits(Vec2 a, Vec2 b) {
    return same_bits(a.x, b.x) && same_bits(a.y, b.y);
}

}  // namespace

double distance_to_line(Vec2 p, const Line& line, double scale) {
    return distance(p, foot_of_perpendicular(p, line)) * scale;
}

double projected_length(const Line& reference, Vec2 c, Vec2 d, double scale, Sign sign) {
    if (reference.vertical()) return 0.0;
    const Vec2 fc = foot_of_perpendicular(c, reference), fd = foot_of_perpendicular(d, reference);
    if (same_bits(fc, fd)) return 0.0;
    const double projected = distance(fc, fd) * scale;
    if (sign == Sign::unsigned_length) return projected;
    const bool rightward = reference.b.x >= reference.a.x;
    const bool against = rightward ? fd.x < fc.x : fd.x >= fc.x;
    return against ? -projected : projected;
}

double triangle_area(Vec2 a, Vec2 b, Vec2 c, double scale) {
    const double l1 = distance(a, b) * scale, l2 = distance(b, c) * scale, l3 = distance(c, a) * scale;
    const double s = (l1 + l2 + l3) * 0.5;
    const double squared = s * (s - l1) * (s - l2) * (s - l3);
    return squared < 0 ? 0.0 : std::sqrt(squared);  // rounding can carry a flat triangle a little below 0
}

}  // namespace tool
