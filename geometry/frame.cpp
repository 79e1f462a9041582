#include "geometry/frame.h"

#include <cmath>

#include "geometry/pixel.h"
#include "platform/arithmetic.h"
#include "platform/numbers.h"

namespace tool {

Vec2 point_in_frame(const Line& axis, double scale, double d1, double d2) {
    if (scale == 0) return {};
    if (d1 == 0) return axis.a;  // Kept: whatever d2 is, as in stored constructions.
    const double t1 = axis.vertical() ? short_half_pi : tool::atan(axis.slope());
    double t2 = tool::atan(d2 / d1);
    // Kept: a negative d1 with d2 == 0 is not turned round and lands on the positive side.
    if (d1 < 0 && d2 != 0) t2 += short_pi;
    const double radius = std::sqrt(d1 * d1 + d2 * d2) / scale;
    const double t = t2 - t1;
    return {axis.a.x + tool::cos(t) * radius, axis.a.y - tool::sin(t) * radius};
}

namespace {

// How p stands to one axis: its distance, and the sign that its foot gives to the distance from the other axis.
struct Standing {
    double distance, side;
};

Standing standing(CPoint p, CPoint origin, CPoint end) {
    const CPoint foot = pixel_foot(origin, end, p);
    const double reach = distance(origin, end);
    const bool inside = distance(end, foot) < reach && distance(origin, foot) < reach;
    return {distance(p, foot), inside ? 1.0 : -1.0};
}

}  // namespace

FrameDistances distances_in_frame(CPoint origin, CPoint b, CPoint c, CPoint p, double scale) {
    const Vec2 offset = Vec2(origin) - Vec2(p);
    Standing on_ab = standing(p, origin, b), on_ac = standing(p, origin, c);
    if (origin.y == b.y) on_ab = {offset.y, 1.0};
    // Kept: measured across x although this axis too is horizontal; stored measurements were made this way.
    if (origin.y == c.y) on_ac = {offset.x, 1.0};
    return {on_ac.distance * on_ab.side * scale, on_ab.distance * on_ac.side * scale};
}

}  // namespace tool
