// Every rule of CCalcTool written out plainly, in its order of evaluation: the oracle that the library must agree
// with to the last bit.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>

#include "PointD.h"
#include "platform/arithmetic.h"
#include "platform/numbers.h"

// What a function writes over the point (7, 7).
#define AT(name, ...) [&](CPointD out) { return CCalcTool::name(__VA_ARGS__, &out), out; }(CPointD(7, 7))

struct Plain {
    using P = const CPointD&;
    static constexpr double pi = 3.141592654, half_pi = 1.570796327;

    static double size(P v) { return std::sqrt(v.x * v.x + v.y * v.y); }
    static double length(P a, P b, double scale) { return size(b - a) * scale; }
    static double slope(P a, P b) { return (b.y - a.y) / (b.x - a.x); }
    static double offset(P a, P b) { return a.y - a.x * slope(a, b); }
    static double area(double l1, double l2, double l3) {
        const double s = (l1 + l2 + l3) * 0.5, square = s * (s - l1) * (s - l2) * (s - l3);
        return std::sqrt(square < 0 ? 0 : square);
    }
    static double angle_abc(P u, P v) {
        if (size(u) * size(v) == 0) return -1.0;
        const double cosine = (u.x * v.x + u.y * v.y) / (size(u) * size(v));
        return 180.0 - tool::acos(std::clamp(cosine, -1.0, 1.0)) / pi * 180.0;
    }
    static CPointD turned(P v, double t) {
        return {v.x * tool::cos(t) - v.y * tool::sin(t), v.x * tool::sin(t) + v.y * tool::cos(t)};
    }
    static double signed_angle(P u, P v) {
        if (u.x == v.x && u.y == v.y) return 0.0;
        if (-v.x == u.x && -v.y == u.y) return 180.0;
        if (u.y != 0 && v.y != 0 && v.x / v.y == u.x / u.y) return 0.0;
        if (u.x != 0 && v.x != 0 && u.y / u.x == v.y / v.x) return 0.0;
        const CPointD u1(u.x / size(u), u.y / size(u)), v1(v.x / size(v), v.y / size(v));
        const double cosine = (u.x * v.x + u.y * v.y) / (size(u) * size(v)), t = tool::acos(cosine);
        if (std::isnan(cosine) || cosine >= 1.0) return 0.0;
        if (cosine <= -1.0) return 180.0;
        return (length(turned(u1, -t), v1, 1) <= length(turned(u1, t), v1, 1) ? 1 : -1) * t / pi * 180.0;
    }
    static double halfway(double a, double b) { return a == b ? a : a + (b - a) * 0.5; }
    static CPointD foot(P a, P b, P p) {
        const double m = slope(a, b), w = p.x / m + p.y - offset(a, b);
        const CPointD oblique(m * w / (1 + m * m), w * m * m / (1 + m * m) + offset(a, b));
        return a.x == b.x ? CPointD(a.x, p.y) : a.y == b.y ? CPointD(p.x, a.y) : oblique;
    }
    static CPointD foot_on_parallel(P a, P b, P c, P d) {
        const double m = slope(a, b), n = -(b.x - a.x) / (b.y - a.y), k1 = c.y - c.x * n;
        const double x = (d.y - d.x * m - k1) / (n - m);
        return a.x == b.x ? CPointD(d.x, c.y) : a.y == b.y ? CPointD(c.x, d.y) : CPointD(x, n * x + k1);
    }
    static int cross(P a, P b, P c, P d, CPointD& out) {
        const double m1 = slope(a, b), k1 = offset(a, b), m2 = slope(c, d), k2 = offset(c, d);
        if (a.x == b.x) out.x = a.x;
        if (a.x == b.x ? c.x == d.x : c.x != d.x && m1 == m2) return 0;
        if (a.x != b.x) out.x = c.x == d.x ? c.x : (k2 - k1) / (m1 - m2);
        out.y = a.x == b.x ? m2 * out.x + k2 : m1 * out.x + k1;
        return 1;
    }
    static CPointD toward(P a, P b, double r) {
        const double m = slope(a, b), ex = std::sqrt(r * r / (m * m + 1)), ey = std::sqrt(r * r - ex * ex);
        const double x = tool::truncated(a.y == b.y ? r : ex), y = tool::truncated(a.x == b.x ? r : ey);
        return {a.x == b.x ? a.x : a.x + x * (b.x < a.x ? -1 : 1),
                a.y == b.y && a.x != b.x ? a.y : a.y + y * (b.y < a.y ? -1 : 1)};
    }
    static CPointD in_frame(P a, P b, double scale, double d1, double d2) {
        if (scale == 0) return {0, 0};
        if (d1 == 0) return a;
        const double t1 = b.x == a.x ? half_pi : tool::atan(slope(a, b));
        const double t2 = tool::atan(d2 / d1), t = (d1 < 0 && d2 != 0 ? t2 + pi : t2) - t1;
        const double l = std::sqrt(d1 * d1 + d2 * d2) / scale;
        return {a.x + tool::cos(t) * l, a.y - tool::sin(t) * l};
    }
    static double projected(P a, P b, P fc, P fd, double scale, int mode) {
        if (a.x == b.x || std::memcmp(&fc, &fd, sizeof fc) == 0) return 0.0;
        const bool against = mode != 0 && (b.x >= a.x ? fd.x < fc.x : fd.x >= fc.x);
        return against ? -length(fc, fd, scale) : length(fc, fd, scale);
    }
    static CPointD translated(P a, P b, P c, double dist, double angle, double scale) {
        if (scale == 0) return b;
        const int sx = b.x < a.x ? 1 : -1, sy = b.y < a.y ? 1 : -1;
        const double e = sx * sy == 1 ? a.y - b.y : b.y - a.y, r = angle / 180.0 * pi;
        const double t0 = b.x == a.x ? -half_pi : tool::atan(e / (b.x - a.x));
        const double t = sx * sy == 1 ? pi + t0 - r : pi + t0 + r;
        return {c.x + tool::cos(t) * dist / scale * sx, c.y - tool::sin(t) * dist / scale * sy};
    }
    static CPointD turned_about(P a, P b, double angle, double scale, double last_scale) {
        const CPointD ref = translated(b, a, a, 100.0, 0.0, scale);
        return translated(ref, a, a, length(a, b, scale), angle < 0 ? angle + 360.0 : angle, last_scale);
    }
    static CPointD pixel_foot(P a, P b, P p) {
        if (a.x == b.x || a.y == b.y) return foot(a, b, p);
        return CPoint(tool::truncated(foot(a, b, p).x + 0.5), tool::truncated(foot(a, b, p).y + 0.5));
    }
    // p's distance from the axis through its foot, and the sign that this foot gives to the other distance.
    static CPointD standing(P a, P b, P p, P foot, double level) {
        if (a.y == b.y) return {level, 1};
        const double reach = length(a, b, 1);
        return {length(p, foot, 1), length(b, foot, 1) < reach && length(a, foot, 1) < reach ? 1.0 : -1.0};
    }
};
