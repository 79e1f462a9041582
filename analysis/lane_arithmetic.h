// The arithmetic of formulas (arithmetic.h) for 64 cases at a time, with the same bits. Plain cases only: each function
// tells the lanes whose result is none, since something is undefined, vertical, horizontal or otherwise apart. Those
// are computed one by one.
#pragma once

#include "analysis/arithmetic.h"
#include "platform/lanes.h"

namespace tool {

struct LanePoints {
    LaneNumbers x, y;

    Vec2 operator[](std::size_t lane) const { return {x[lane], y[lane]}; }
};

// Results are other objects than arguments.
void middle(const LanePoints& a, const LanePoints& b, LanePoints& point);  // of all lanes
Lanes foot(const LanePoints& p, const LanePoints& a, const LanePoints& b, LanePoints& point);
Lanes crossing(const LanePoints& a, const LanePoints& b, const LanePoints& c, const LanePoints& d, LanePoints& point);

Lanes extension(const LanePoints& a, const LanePoints& b, double mm, const LaneNumbers& scale, LanePoints& point);

// Of one of the three measures, in mm. All lanes have a length; it tells those whose points lie at one place.
Lanes length(Measure measure, const LanePoints& a, const LanePoints& b, const LaneNumbers& scale, LaneNumbers& length);
Lanes angle_at(const LanePoints& a, const LanePoints& b, const LanePoints& c, LaneNumbers& angle);
Lanes signed_angle(const LanePoints& a, const LanePoints& b, const LanePoints& c, const LanePoints& d,
                   LaneNumbers& angle);
// 1 or -1, as its sign is.
Lanes sign_of_angle(const LanePoints& a, const LanePoints& b, const LanePoints& c, const LanePoints& d,
                    LaneNumbers& sign);

// These are of all lanes.
void combined(Operation operation, const LaneNumbers& left, const LaneNumbers& right, LaneNumbers& number);
// Puts `number` where `tested`, cut toward zero, is `place`, which is 0 or more.
void choose(const LaneNumbers& tested, int place, const LaneNumbers& number, LaneNumbers& chosen);
// Puts `place` where `tested`, cut toward zero, is not 0.
void choose_not_zero(const LaneNumbers& tested, double place, LaneNumbers& chosen);

// NaN becomes (0, 0). `within` stays 1 where both coordinates are at most `farthest`, `whole` where both are whole.
void take_placed(LanePoints& points, double farthest, LaneNumbers& within, LaneNumbers& whole);
// The nearest whole steps, of two equally near those further from 0.
void to_steps(LanePoints& points, const LaneNumbers& steps_a_pixel);

Lanes lanes_but(const LaneNumbers& told);  // where it is not 1
Lanes lanes_at_origin(const LanePoints& points);
Lanes lanes_not_finite(const LaneNumbers& numbers);

}  // namespace tool
