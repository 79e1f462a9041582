// Traced outlines: control points drawn as a smooth curve, and its length.
#pragma once

#include <span>
#include <utility>

#include "framework/drawing.h"
#include "render/mapping.h"
#include "render/pen.h"
#include "render/spline.h"

namespace tool {

// One polyline of the thinned samples; `flip` is for map modes whose y points up. Two control points give a straight
// line, fewer nothing.
void draw_outline(CDC& dc, std::span<const POINT> points, bool closed, const View& view, bool flip,
                  const Stroke& stroke, PenRule& pen_rule);

// The length in pixels from control point `from` to control point `to`, along the samples before thinning, with the
// control points themselves at each segment's ends. On a closed outline `to` lies ahead of `from`, if need be past the
// start, and index n is the start again; on an open one their order does not matter. 0.0 for an index outside and for
// fewer than two points; two points are joined by a straight line.
template <class Point>
double outline_length(std::span<const Point> points, bool closed, int from, int to) {
    const int n = static_cast<int>(points.size());
    const bool round = closed && n >= 3;
    const int last = round ? n : n - 1;
    if (n < 2 || from < 0 || to < 0 || from > last || to > last) return 0.0;
    if (n == 2) return from == to ? 0.0 : distance(points[0], points[1]);
    if (from > to && !round) std::swap(from, to);

    const Curve<Point> curve(points, round);
    double length = 0.0;
    for (int i = from, segments = from > to ? n - from + to : to - from; segments > 0; ++i, --segments) {
        const Controls c = curve.controls(static_cast<std::size_t>(i % n));
        Vec2 before = c.from;
        const auto reach = [&](Vec2 p) {
            length += distance(before, p);
            before = p;
        };
        sample(c, sample_step(c, curve.segments()), reach);
        reach(c.to);
    }
    return length;
}

}  // namespace tool
