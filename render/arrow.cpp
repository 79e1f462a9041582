#include "render/arrow.h"

#include "geometry/translation.h"
#include "platform/numbers.h"

namespace tool {

std::array<POINT, 3> arrow_head(CPoint from, CPoint tip, double length, double first_turn_deg) {
    const auto barb = [&](double turn_deg) -> POINT {
        const Vec2 end = translated_along(from, tip, tip, length, turn_deg, 1.0);
        return {rounded(end.x), rounded(end.y)};
    };
    return {tip, barb(first_turn_deg), barb(-first_turn_deg)};
}

}  // namespace tool
