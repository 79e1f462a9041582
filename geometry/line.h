// Points on lines: the middle of a segment, feet of perpendiculars, intersections.
//
// Kept: all of it works on slopes and offsets with exactly vertical and horizontal lines apart, although vectors and
// determinants would be steadier; stored measurements were made this way.
#pragma once

#include <optional>

#include "geometry/vec2.h"

namespace tool {

// The directed line from a through b. With a == b it counts as vertical.
struct Line {
    Vec2 a, b;

    constexpr bool vertical() const { return a.x == b.x; }
    constexpr bool horizontal() const { return a.y == b.y; }
    constexpr Vec2 direction() const { return b - a; }
    constexpr double slope() const { return (b.y - a.y) / (b.x - a.x); }  // of a line that is not vertical
    constexpr double offset() const { return a.y - a.x * slope(); }       // y at x = 0, likewise
};

inline double halfway(double from, double to) {
    return from == to ? from : from + (to - from) * 0.5;
}
Vec2 midpoint(Vec2 a, Vec2 b);

Vec2 foot_of_perpendicular(Vec2 p, const Line& line);

// The same on a line that is neither vertical nor horizontal.
inline Vec2 foot_on_slope(Vec2 p, const Line& line) {
    // With y = m x + k and the perpendicular y = p.y - (x - p.x) / m, both multiplied by m.
    const double m = line.slope(), k = line.offset();
    const double w = p.x / m + p.y - k;
    return {m * w / (1.0 + m * m), w * m * m / (1.0 + m * m) + k};
}

// The foot of p on the parallel to `line` through `through`.
Vec2 foot_on_parallel(Vec2 p, const Line& line, Vec2 through);

// The point that lines share which are not vertical and have different slopes.
inline Vec2 crossing_of_slopes(const Line& ab, const Line& cd) {
    const double m = ab.slope(), k = ab.offset();
    const double x = (cd.offset() - k) / (m - cd.slope());
    return {x, m * x + k};
}

// The point that both lines share; nothing when they are parallel (both vertical, or exactly equal slopes).
inline std::optional<Vec2> intersection(const Line& ab, const Line& cd) {
    if (ab.vertical()) {
        if (cd.vertical()) return std::nullopt;
        return Vec2(ab.a.x, cd.slope() * ab.a.x + cd.offset());
    }
    if (cd.vertical()) return Vec2(cd.a.x, ab.slope() * cd.a.x + ab.offset());
    if (ab.slope() == cd.slope()) return std::nullopt;
    return crossing_of_slopes(ab, cd);
}

// The same with (0, 0), the empty point, for parallel lines; a shared point at the origin looks just so.
inline Vec2 intersection_or_empty(const Line& ab, const Line& cd) {
    return intersection(ab, cd).value_or(Vec2());
}

}  // namespace tool
