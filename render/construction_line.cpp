#include "render/construction_line.h"

#include "platform/numbers.h"

namespace tool {

namespace {

Segment vertical_through(Vec2 p, const RECT& bounds) {
    const int x = truncated(p.x);
    return {{x, bounds.top}, {x, bounds.bottom}};
}

Segment sloping_through(Vec2 p, double slope, const RECT& bounds) {
    const double offset = p.y - p.x * slope;
    // Kept: from 0.5 upward but only from -1.5 downward a line counts as steep. Stored layouts place labels at the
    // ends that this lopsided rule gives.
    const int whole_slope = rounded(slope);
    if (whole_slope >= 1 || whole_slope <= -1) {
        const auto x_at = [&](int y) { return rounded((y - offset) / slope); };
        return {{x_at(bounds.top), bounds.top}, {x_at(bounds.bottom), bounds.bottom}};
    }
    const auto y_at = [&](int x) { return rounded(x * slope + offset); };
    return {{bounds.left, y_at(bounds.left)}, {bounds.right, y_at(bounds.right)}};
}

}  // namespace

Segment parallel_through(Vec2 p, const Line& line, const RECT& bounds) {
    return line.vertical() ? vertical_through(p, bounds) : sloping_through(p, line.slope(), bounds);
}

Segment perpendicular_through(Vec2 p, const Line& line, const RECT& bounds) {
    if (line.vertical()) return sloping_through(p, 0.0, bounds);
    if (line.horizontal()) return vertical_through(p, bounds);
    return sloping_through(p, -1.0 / line.slope(), bounds);
}

}  // namespace tool
