#include "geometry/pixel.h"

#include <cstdint>

#include "geometry/line.h"
#include "geometry/translation.h"
#include "platform/numbers.h"

namespace tool {

namespace {

LONG halfway(LONG from, LONG to) {
    return static_cast<LONG>(from + (std::int64_t{to} - from) / 2);  // between both, so it fits
}

}  // namespace

CPoint pixel_midpoint(CPoint a, CPoint b) {
    return {halfway(a.x, b.x), halfway(a.y, b.y)};
}

CPoint pixel_foot(CPoint a, CPoint b, CPoint p) {
    // Rounding must not touch the whole coordinates of these two: it would move negative ones.
    if (a.x == b.x) return {a.x, p.y};
    if (a.y == b.y) return {p.x, a.y};
    const Vec2 foot = foot_of_perpendicular(p, {a, b});
    return {rounded(foot.x), rounded(foot.y)};
}

CPoint pixel_toward(CPoint a, CPoint b, double radius) {
    const Vec2 point = stepped_toward(a, b, radius);
    return {truncated(point.x), truncated(point.y)};
}

CPoint pixel_moved(CPoint a, CPoint b, CPoint c, double k) {
    const Vec2 step = Vec2(b) - Vec2(a);
    // Kept: the step is cut, not rounded as elsewhere; stored constructions were made this way.
    const Vec2 moved = Vec2(c) + Vec2(truncated(step.x * k), truncated(step.y * k));
    return {truncated(moved.x), truncated(moved.y)};
}

}  // namespace tool
