#include "analysis/check/trials.h"

#include <cstdio>

#include "analysis/cast_points.h"
#include "analysis/formula.h"
#include "platform/number_text.h"

namespace tool {
namespace {

// Positions without any order, so that no two measures agree by chance.
CPoint position(int point, int trial) {
    return {100 + (point * point * 37 + point * 11 + trial * 29) % 983,
            90 + (point * point * 53 + point * 7 + trial * 41) % 1097};
}

double item_value(std::string_view name, int trial) {
    constexpr double first[] = {41.7, -3.9, 0.37}, step[] = {2.3, 1.7, 0.011};
    return first[trial] + step[trial] * read_int(name);
}

void write_name(char* name, std::size_t size, int point) {
    std::snprintf(name, size, "P%02d", point % USER_POINT_MAX);
}

}  // namespace

FormulaTrials::FormulaTrials() {
    for (int trial = 0; trial < count; ++trial) {
        tagPOINTMO& record = records_[trial];
        record.Scale = 0.1 + 0.07 * trial;
        record.Palate = trial;
        for (int slot = 0; slot < cast_point_count; ++slot)
            cast_point(record, slot) = position(USER_POINT_MAX + slot, trial);
        for (int point = 0; point < USER_POINT_MAX; ++point) {
            write_name(record.UserName[point], sizeof record.UserName[point], point);
            record.UserPoint[point] = position(point, trial);
        }
        landmarks_[trial] = std::make_unique<Landmarks>(2, &record, nullptr, nullptr, &user_count_);
    }
}

std::string FormulaTrials::points(int call, int needed) {
    std::string text;
    for (int i = 0; i < needed; ++i) {
        char name[sizeof tagUPOINT::Name];
        write_name(name, sizeof name, call * 5 + i * 17);
        text.append("[").append(name).append("]");
    }
    return text;
}

std::string FormulaTrials::item(int call) {
    return '"' + print_int(call) + '"';
}

double FormulaTrials::evaluated(std::string_view formula, int trial) const {
    PointReader points(*landmarks_[trial]);
    double values[value_list_capacity];
    int used = 0;
    Formula work(formula, true, ValueList(values, &used), points);
    while (const auto reference = work.advance()) work.supply(item_value(reference->name, trial));
    return work.result();
}

}  // namespace tool
