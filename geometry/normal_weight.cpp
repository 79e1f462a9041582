#include "geometry/normal_weight.h"

#include <algorithm>
#include <iterator>

#include "platform/numbers.h"

namespace tool {

namespace {

struct WeightLine {
    double slope, offset;
};

struct SchoolYear {
    WeightLine female, male;
};

constexpr SchoolYear from_six[] = {
    {{0.458, -32.079}, {0.461, -32.382}},  // 6 years
    {{0.508, -38.367}, {0.513, -38.878}}, {{0.561, -45.006}, {0.592, -48.804}}, {{0.652, -56.992}, {0.687, -61.39}},
    {{0.73, -68.091}, {0.752, -70.461}},  // 10
    {{0.803, -78.846}, {0.782, -75.106}}, {{0.796, -76.934}, {0.783, -75.642}}, {{0.655, -54.234}, {0.815, -81.348}},
    {{0.594, -43.264}, {0.832, -83.695}}, {{0.56, -37.002}, {0.766, -70.989}},   // 15
    {{0.578, -39.057}, {0.656, -51.822}}, {{0.598, -42.339}, {0.672, -53.642}},  // 17 and over
};

}  // namespace

double normal_weight(double age_years, double height_cm, int sex) {
    const bool male = sex == 1;
    const int age = rounded(age_years);
    const double h = height_cm;
    if (age < 1) return 0.0;
    if (age <= 5) return male ? 0.00206 * h * h - 0.1166 * h + 6.5273 : 0.00249 * h * h - 0.1858 * h + 9.036;
    const int last = static_cast<int>(std::size(from_six)) - 1;
    const SchoolYear& year = from_six[std::min(age - 6, last)];
    const WeightLine& line = male ? year.male : year.female;
    return line.slope * h + line.offset;
}

}  // namespace tool
