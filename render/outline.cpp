#include "render/outline.h"

#include <array>
#include <vector>

#include "render/line.h"

namespace tool {

void draw_outline(CDC& dc, std::span<const POINT> points, bool closed, const View& view, bool flip,
                  const Stroke& stroke, PenRule& pen_rule) {
    const auto device = [&](Vec2 p) -> POINT {
        const CPoint there = view.device(p);
        return flip ? flipped(there) : there;
    };
    if (points.size() < 2) return;
    if (points.size() == 2)
        return draw_polyline(dc, std::array{device(points[0]), device(points[1])}, stroke, pen_rule);

    // Counted first, so that the points need one allocation.
    const Curve<POINT> curve(points, closed);
    std::size_t count = 0;
    sample_thinned(curve, [&](Vec2) { ++count; });
    std::vector<POINT> kept;
    kept.reserve(count);
    sample_thinned(curve, [&](Vec2 p) { kept.push_back(device(p)); });
    draw_polyline(dc, kept, stroke, pen_rule);
}

}  // namespace tool
