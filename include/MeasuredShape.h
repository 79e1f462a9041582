// Addition of this project: what a formula measures on a film, for hosts that draw it.
#pragma once

#include <vector>

#include "framework/export.h"

namespace tool {

// In pixels of the film, x to the right, y down; a lateral face looks right.
struct FilmPoint {
    double x = 0, y = 0;
    bool operator==(const FilmPoint&) const = default;
};

// What a shape's points are, in their order. Those of a construction end with the point that it makes.
enum class ShapeKind {
    length,        // from, to
    length_right,  // from, to: how far to the right
    length_down,   // from, to: how far down
    angle,         // end of a side, vertex, end of the other
    line_angle,    // from, to of the first line; from, to of the second
    middle,        // two points; the middle
    foot,          // a point, the two of the line; the foot of the perpendicular
    crossing,      // the two points of each line; where they meet
    bisector,      // vertex, a point on each side; the point on the bisector
    extension,     // from, to; the point beyond
    effective_a,   // N, A, U1R, U1, U1C; the effective point A
};

// What a formula measured or constructed, to be drawn on the film.
struct MeasuredShape {
    ShapeKind kind = ShapeKind::length;
    std::vector<FilmPoint> points;
    bool operator==(const MeasuredShape&) const = default;
};

struct Segment {
    FilmPoint from, to;
};

// The lines to draw a shape with: sides of an angle from its vertex, the perpendicular and its line up to the foot,
// lines up to where they cross.
TOOL_API std::vector<Segment> segments_of(const MeasuredShape& shape);

}  // namespace tool
