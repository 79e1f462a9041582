// A point or vector of the image plane: pixels, x to the right, y down.
#pragma once

#include <cmath>
#include <concepts>

namespace tool {

// The host's point kinds: CPoint, tagDPOINT, CPointD.
template <class P>
concept HasXAndY = requires(const P& p) {
    { p.x } -> std::convertible_to<double>;
    { p.y } -> std::convertible_to<double>;
};

struct Vec2 {
    double x = 0, y = 0;

    constexpr Vec2() = default;
    constexpr Vec2(double px, double py) : x(px), y(py) {}
    template <HasXAndY P>
    constexpr Vec2(const P& p) : x(p.x), y(p.y) {}  // whole pixels convert exactly

    constexpr bool operator==(const Vec2&) const = default;  // exact, without tolerance
};

constexpr Vec2 operator+(Vec2 a, Vec2 b) {
    return {a.x + b.x, a.y + b.y};
}
constexpr Vec2 operator-(Vec2 a, Vec2 b) {
    return {a.x - b.x, a.y - b.y};
}
constexpr Vec2 operator*(double k, Vec2 v) {
    return {v.x * k, v.y * k};
}
constexpr Vec2 operator/(Vec2 v, double k) {
    return {v.x / k, v.y / k};
}
constexpr double dot(Vec2 u, Vec2 v) {
    return u.x * v.x + u.y * v.y;
}
// Above 0 when v lies clockwise of u, as seen on the screen.
constexpr double cross(Vec2 u, Vec2 v) {
    return u.x * v.y - u.y * v.x;
}

// The plain root, not hypot: other bits otherwise. Overflows to infinity beyond about 1e154.
inline double length(Vec2 v) {
    return std::sqrt(dot(v, v));
}
inline double distance(Vec2 a, Vec2 b) {
    return length(b - a);
}

}  // namespace tool
