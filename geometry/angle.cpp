#include "geometry/angle.h"

#include <algorithm>
#include <cmath>

#include "platform/arithmetic.h"
#include "platform/numbers.h"

namespace tool {

namespace {

// x' = x cos - y sin, y' = x sin + y cos
Vec2 turned(Vec2 v, double radians) {
    const double c = tool::cos(radians), s = tool::sin(radians);
    return {v.x * c - v.y * s, v.x * s + v.y * c};
}

// Whether turning the unit vector `from` back by `radians` brings it at least as near to `to` as turning it forward.
bool lies_back(Vec2 from, Vec2 to, double radians) {
    // The side that `to` lies on decides: turned the right way the two agree to about 1e-11, the other way they are
    // 2e-4 apart. Nearer to the line of `from` rounding can decide, so there the two distances are compared.
    const double side = from.x * to.y - from.y * to.x;
    if (std::abs(side) > 1e-4) return side < 0;
    return distance(turned(from, -radians), to) <= distance(turned(from, radians), to);
}

// Kept: vectors along one line count as parallel whichever way they point; only exact negatives are opposite.
bool parallel(Vec2 u, Vec2 v) {
    return (u.y != 0 && v.y != 0 && v.x / v.y == u.x / u.y) || (u.x != 0 && v.x != 0 && u.y / u.x == v.y / v.x);
}

}  // namespace

double angle_at(Vec2 a, Vec2 b, Vec2 c, ToDegrees to_degrees) {
    const Vec2 u = b - a, v = c - b;
    const double lengths = length(u) * length(v);
    if (lengths == 0) return -1.0;
    // Rounding can carry the cosine of a straight angle a little past 1.
    return 180.0 - to_degrees(tool::acos(std::clamp(dot(u, v) / lengths, -1.0, 1.0)));
}

double signed_angle(const Line& ab, const Line& cd, ToDegrees to_degrees) {
    const Vec2 u = ab.direction(), v = cd.direction();
    if (u == v) return 0.0;
    if (-v.x == u.x && -v.y == u.y) return 180.0;
    if (parallel(u, v)) return 0.0;

    const double cosine = dot(u, v) / (length(u) * length(v));
    if (!(cosine < 1.0)) return 0.0;  // also NaN, which a line without length gives
    if (cosine <= -1.0) return 180.0;

    const double radians = tool::acos(cosine);
    return to_degrees(lies_back(u / length(u), v / length(v), radians) ? radians : -radians);
}

}  // namespace tool
