// Frames, figures and constructed points of a lateral record. Nothing is made of a landmark that was not placed.
#pragma once

#include <optional>

#include "Records.h"
#include "geometry/vec2.h"

namespace tool {

// A frame's origin and a point on its x axis, which differ; nothing without its landmarks or for a plane that
// CCalcTool does not number.
struct Axis {
    Vec2 origin, toward;
};
std::optional<Axis> lateral_axis(const tagPOINTLAT& record, int plane);

// The PROFIRO_ bits of the parts whose landmarks are all placed.
int profilogram_parts(const tagPOINTLAT& record);

// What CCalcTool::Point_Make puts into a slot, whatever it holds; nothing for other slots, without the landmarks, for
// parallel lines, and when it would be the empty point or leave 32 bits.
CPoint nearest_pixel(Vec2 point);
std::optional<Vec2> constructed_point(const tagPOINTLAT& record, int slot);

}  // namespace tool
