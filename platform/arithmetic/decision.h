// What a function's value is compared with where its fast approximation lies too near to the middle of two doubles:
// that middle. No value is such a middle: acos, atan, sin, cos and exp of an algebraic number other than 0 (acos: 1)
// are transcendental (Lindemann, Weierstrass). So some number of digits tells. The comparisons begin with 128 bits
// behind the point and end with 512: of functions whose worst doubles are known, none needs 130 (Lefevre, Muller: Worst
// cases for correct rounding of the elementary functions in double precision, 2001). Beyond that a value would count as
// below.
#pragma once

#include "platform/arithmetic/fixed_point.h"

namespace tool {

// Whether the value is above `middle`, which is above 0. Arguments are those that arithmetic.cpp has an approximation
// for.
bool acos_above(double x, Parts middle);                    // -1 < x < 1
bool atan_above(double x, Parts middle);                    // 2^-27 <= x < 2^54
bool sin_above(double x, unsigned quarters, Parts middle);  // |sin(|x| + quarters pi/2)|
bool exp_above(double x, Parts middle);

}  // namespace tool
