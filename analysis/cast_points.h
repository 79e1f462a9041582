// The measuring points of a dental cast as numbered, named slots of its record.
#pragma once

#include <string_view>

#include "Records.h"

namespace tool {

// Teeth first (upper, then lower arch; mesial before distal), then the arch points.
inline constexpr int teeth_in_arch = 12;
// Of each of the four curves: width right, width left, front, rear right, rear left.
inline constexpr int arch_points = 5;
inline constexpr int cast_point_count = 2 * teeth_in_arch * 2 + 4 * arch_points;

enum class CastCurve { upper_coronal, upper_basal, lower_coronal, lower_basal };

constexpr int tooth_slot(bool lower, int tooth) {
    return (lower ? 2 * teeth_in_arch : 0) + 2 * tooth;  // the mesial point; the distal one follows
}
constexpr int curve_slot(CastCurve curve) {
    return 2 * teeth_in_arch * 2 + static_cast<int>(curve) * arch_points;
}

// NUL-terminated and static.
std::string_view cast_point_name(int slot);

CPoint& cast_point(tagPOINTMO& record, int slot);

}  // namespace tool
