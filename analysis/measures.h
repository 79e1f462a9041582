// The measuring functions of formulas.
#pragma once

#include <string_view>

#include "analysis/point_expression.h"

namespace tool {

// The codes that travel through the exported interface. angle3 and angle4 measure what angle1 and angle2 measure; 106
// and 107 are accepted and measure nothing.
enum class Measure : unsigned {
    length = 101,
    length_right = 102,  // negative when the first point lies to the right of the second
    length_down = 103,   // negative when the first point lies below the second
    angle1 = 104,
    angle2 = 105,
    model = 108,
    angle3 = 109,
    angle4 = 110
};

struct Measured {
    double value;
    std::size_t end;  // bytes of the text that belong to the function, its own ")" included
};

// `text` is what stands behind the function's name. 0 when a point is missing, for an unknown function, and for an
// angle between sides without length. Lengths are mm by the record's scale, angles degrees.
Measured measured(Measure function, std::string_view text, PointReader& points);

// Decimals of cast measures: key MODEL_DECIMALS in section ENV of the host's profile, 2 when it is not there.
int cast_decimals();

// Digits that a cast measure is rounded to, through text: 0 and 1 decimals, 9 for the nearest half, any other for 2.
double rounded_cast_measure(double value, int decimals);

}  // namespace tool
