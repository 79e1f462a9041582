// Smooth curves through control points, and their samples.
#pragma once

#include <algorithm>
#include <span>

#include "geometry/vec2.h"

namespace tool {

// Four neighbouring control points; the segment runs between the inner two.
struct Controls {
    Vec2 before, from, to, after;
};

// Uniform Catmull-Rom interpolation (Catmull and Rom, "A class of local interpolating splines", 1974, tension 1/2):
// exactly `from` at t = 0 and `to` at t = 1.
inline Vec2 catmull_rom(const Controls& c, double t) {
    const double t2 = t * t, t3 = t2 * t;
    const double w0 = -t3 + 2 * t2 - t, w1 = 3 * t3 - 5 * t2 + 2, w2 = -3 * t3 + 4 * t2 + t, w3 = t3 - t2;
    return {0.5 * (w0 * c.before.x + w1 * c.from.x + w2 * c.to.x + w3 * c.after.x),
            0.5 * (w0 * c.before.y + w1 * c.from.y + w2 * c.to.y + w3 * c.after.y)};
}

// Uniform cubic B-spline approximation (de Boor, "A Practical Guide to Splines"): near the control points, not through
// them.
inline Vec2 b_spline(const Controls& c, double t) {
    const double t2 = t * t, t3 = t2 * t, rest = 1 - t;
    const double w0 = rest * rest * rest, w1 = 3 * t3 - 6 * t2 + 4, w2 = -3 * t3 + 3 * t2 + 3 * t + 1, w3 = t3;
    return {(w0 * c.before.x + w1 * c.from.x + w2 * c.to.x + w3 * c.after.x) / 6,
            (w0 * c.before.y + w1 * c.from.y + w2 * c.to.y + w3 * c.after.y) / 6};
}

// The curve through three or more control points. An open one repeats its end points as outer neighbours; a closed one
// returns to its start and has as many segments as points.
template <class Point>
class Curve {
 public:
    Curve(std::span<const Point> points, bool closed) : points_(points), closed_(closed) {}

    std::size_t segments() const { return closed_ ? points_.size() : points_.size() - 1; }
    bool closed() const { return closed_; }

    Controls controls(std::size_t segment) const {
        const std::size_t n = points_.size();
        if (closed_)
            return {points_[(segment + n - 1) % n], points_[segment], points_[(segment + 1) % n],
                    points_[(segment + 2) % n]};
        return {points_[segment > 0 ? segment - 1 : 0], points_[segment], points_[segment + 1],
                points_[std::min(segment + 2, n - 1)]};
    }

 private:
    std::span<const Point> points_;
    bool closed_;
};

// The step of t: a sample for each 5 pixels of chord, at least 10 a segment. A curve of 2^22 samples (some 20 million
// pixels, longer than any outline) and more is sampled more sparsely, so that no coordinates take for ever.
inline double sample_step(const Controls& c, std::size_t segments) {
    const double most = std::max(10.0, 4194304.0 / static_cast<double>(segments));
    return 1.0 / std::min(std::max(distance(c.from, c.to) / 5.0, 10.0), most);
}

// Hands `take` each sample of a segment. Kept: t is summed up, so that for some steps the sum passes 1 a little early
// and the segment's end is not sampled; stored tracings were drawn through these points.
template <class Take>
void sample(const Controls& c, double step, Take take) {
    for (double t = 0.0; t <= 1.0; t += step) take(catmull_rom(c, t));
}

// Hands `take` the samples at least 10 pixels from the last one taken, the first included; a closed curve ends with
// the first one once more.
template <class Point, class Take>
void sample_thinned(const Curve<Point>& curve, Take take) {
    // The smallest square whose root, rounded, is 10 pixels: the comparison needs no root.
    constexpr double closest_squared = 0x1.8ffffffffffffp6;
    Vec2 first, last;
    bool any = false;
    const auto keep = [&](Vec2 p) {
        if (!any) first = p;
        any = true;
        take(last = p);
    };
    for (std::size_t i = 0; i < curve.segments(); ++i) {
        const Controls c = curve.controls(i);
        sample(c, sample_step(c, curve.segments()), [&](Vec2 p) {
            const Vec2 gap = p - last;
            if (!any || dot(gap, gap) >= closest_squared) keep(p);
        });
    }
    if (curve.closed() && last != first) keep(first);
}

}  // namespace tool
