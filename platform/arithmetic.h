// The functions whose last bit depends on the C library that a program meets, as everyone's tables have them: correctly
// rounded, to nearest with ties to even. So a measurement has the same bits on every platform. What is not here (sqrt
// and the four operations) IEEE 754 rounds alike everywhere.
//
// Angles are in radians. NaN gives NaN, and so does an argument outside the domain; signs of zero and infinities are
// those of annex F of the C standard. The thread must round to nearest, as programs do unless they ask for something
// else.
#pragma once

#include "platform/lanes.h"

namespace tool {

double acos(double cosine);  // in 0 ... pi; NaN outside -1 ... 1
double atan(double tangent);
double sin(double angle);  // any size of angle; NaN of an infinite one
double cos(double angle);
double exp(double exponent);

// The same of 64 at a time. Argument and result may be one object.
void acos(const LaneNumbers& cosines, LaneNumbers& angles);
void atan(const LaneNumbers& tangents, LaneNumbers& angles);
void sin(const LaneNumbers& angles, LaneNumbers& sines);
void cos(const LaneNumbers& angles, LaneNumbers& cosines);

}  // namespace tool
