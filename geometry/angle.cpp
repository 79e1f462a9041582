#include "geometry/angle.h"

#include <algorithm>
#include <cmath>

#include "platform/arithmetic.h"
#include "platform/numbers.h"

namespace tool {
namespace {

// Turned the right way, unit vectors agree to about 1e-11, the other way they are 2e-4 apart when they span this.
constexpr double clear_side = 1e-4;

// Whether turning the unit vector `from` back by `radians` brings it at least as near to `to` as turning it forward.
bool lies_back(Vec2 from, Vec2 to, double radians) {
    // The side that `to` lies on decides. Nearer to the line of `from` rounding can, so there the two distances are
    // compared.
    const double side = cross(from, to);
    if (std::abs(side) > clear_side) return side < 0;
    return distance(turned(from, -radians), to) <= distance(turned(from, radians), to);
}

// Kept: vectors along one line count as parallel whichever way they point; only exact negatives are opposite.
bool parallel(Vec2 u, Vec2 v) {
    return (u.y != 0 && v.y != 0 && v.x / v.y == u.x / u.y) || (u.x != 0 && v.x != 0 && u.y / u.x == v.y / v.x);
}

// Whether the vectors, of these squared lengths, surely have no quotients in common: equal ones differ by rounding
// alone, 2^-52 of either, or leave the range of doubles, which takes products much smaller.
bool surely_not_parallel(Vec2 u, Vec2 v, double uu, double vv) {
    constexpr double roundings = 1e-12, tiny = 1e-280, longest = 1e26;
    const double right = u.x * v.y, left = u.y * v.x;
    return uu < longest && vv < longest &&
           std::abs(right - left) > roundings * (std::abs(right) + std::abs(left)) + tiny;
}

}  // namespace

Vec2 turned(Vec2 v, double radians) {
    const double c = tool::cos(radians), s = tool::sin(radians);
    return {v.x * c - v.y * s, v.x * s + v.y * c};
}

double angle_at(Vec2 a, Vec2 b, Vec2 c, ToDegrees to_degrees) {
    const Vec2 u = b - a, v = c - b;
    const double lengths = length(u) * length(v);
    if (lengths == 0) return -1.0;
    // Rounding can carry the cosine of a straight angle a little past 1.
    return 180.0 - to_degrees(tool::acos(std::clamp(dot(u, v) / lengths, -1.0, 1.0)));
}

double signed_angle(Vec2 u, Vec2 v, ToDegrees to_degrees) {
    const double uu = dot(u, u), vv = dot(v, v);
    if (!surely_not_parallel(u, v, uu, vv)) {
        if (u == v) return 0.0;
        if (-v.x == u.x && -v.y == u.y) return 180.0;
        if (parallel(u, v)) return 0.0;
    }

    const double lengths = std::sqrt(uu) * std::sqrt(vv), cosine = dot(u, v) / lengths;
    if (!(cosine < 1.0)) return 0.0;  // also NaN, which a line without length gives
    if (cosine <= -1.0) return 180.0;

    const double radians = tool::acos(cosine), side = cross(u, v);
    // Most lines lie so that the unit vectors, four divisions, need not be made.
    const bool back =
        std::abs(side) > 2 * clear_side * lengths ? side < 0 : lies_back(u / length(u), v / length(v), radians);
    return to_degrees(back ? radians : -radians);
}

}  // namespace tool
