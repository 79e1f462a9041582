// Measures of a dental cast, by the tokens that "Model" items name them with.
#pragma once

#include <string_view>
#include <vector>

#include "analysis/cast_terms.h"

namespace tool {

// Value of a token such as "[UCAW]" (U, L: upper, lower arch):
//   [.CAW] [.CAL] [.BAW] [.BAL]  width and length of the coronal and the basal arch, mm
//   [.ATW] [.TTW]                sum of the crown widths of the six front teeth, of all twelve teeth, mm
//   [ATR] [TTR]                  lower in percent of upper: front and overall ratio (Bolton, Angle Orthod
//                                1958;28:113-130)
//   [PLTU]                       the palate category of the record
// and of those that cast_terms.h reads, mm.
// 0.0 for an unknown token and for a measure one of whose points is the empty point.
double cast_measure(std::string_view token, tagPOINTMO& record);

bool is_cast_token(std::string_view token);

// Slots of the points (cast_points.h) that a token's measure needs; some may come twice.
std::vector<int> points_of_measure(std::string_view token);

// What is measured, as lines to be drawn; none when a point is not placed.
std::vector<CastLine> lines_of_measure(std::string_view token, tagPOINTMO& record);

}  // namespace tool
