// How two readings agree, as a plot of Bland and Altman (Lancet 1986;1:307-310): of each film the difference over the
// mean, with bias, limits of agreement and the 95 % confidence intervals of both.
#pragma once

#include <string>
#include <vector>

#include "study/agreement.h"
#include "tracing/canvas.h"

namespace cephtool {

struct AgreementPlot {
    std::string title, over, across;  // of the whole, of the axis to the right, and of that upwards
    std::vector<Position> films;      // mean of the readings, difference
    PairAgreement pair;
};

// `other` counts from 0, the first reading is 0.
std::vector<Position> means_and_differences(const Readings& readings, std::size_t other);

// Either limit of agreement with the 95 % confidence interval of it, by Student's t.
Interval limit_interval(const PairAgreement& pair, std::size_t films, double limit);

// Numbers of 1, 2 or 5 times a power of ten that divide a range, `most` of them or fewer.
std::vector<double> axis_numbers(const Interval& range, int most);

void draw_agreement_plot(const Canvas& canvas, const Box& box, const AgreementPlot& plot);

}  // namespace cephtool
