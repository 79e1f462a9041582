// Arrow heads.
#pragma once

#include <array>

#include "framework/plane.h"

namespace tool {

// The triangle at `tip` of an arrow that comes from `from`: the tip and two barbs `length` away, each 20 degrees off
// the shaft. `first_turn_deg` is 160 or -160 and says which barb comes first.
std::array<POINT, 3> arrow_head(CPoint from, CPoint tip, double length, double first_turn_deg);

}  // namespace tool
