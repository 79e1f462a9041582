// The measuring functions of formulas.
#pragma once

#include <string_view>

#include "analysis/point_expression.h"

namespace tool {

template <class Number>
struct Measured {
    Number value;
    std::size_t end;  // bytes of the text that belong to the function, its own ")" included
};

// `text` is what stands behind the function's name. 0 when a point is missing and for an unknown function.
template <class Arithmetic>
Measured<typename Arithmetic::Number> read_measure(Measure function, std::string_view text,
                                                   PointReader<Arithmetic>& points);

// A cast measure, rounded to the decimals that the host's settings have; 0 for other records.
double measured_cast(std::string_view token, const Landmarks& landmarks);

// Decimals of cast measures: key MODEL_DECIMALS in section ENV of the host's profile, 2 when it is not there.
int cast_decimals();

// Digits that a cast measure is rounded to, through text: 0 and 1 decimals, 9 for the nearest half, any other for 2.
double rounded_cast_measure(double value, int decimals);

}  // namespace tool
