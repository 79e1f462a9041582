#include "util/age.h"

#include <algorithm>

#include "platform/numbers.h"

namespace tool {
namespace {

constexpr int months_a_year = 12, longest_month = 31;

void clamp_to_calendar(DateFields& date) {
    date.month = std::min(date.month, months_a_year);
    date.day = std::min(date.day, longest_month);
}

}  // namespace

Age completed_age(DateFields birth, DateFields day) {
    clamp_to_calendar(birth);
    clamp_to_calendar(day);
    if (birth.month == 0 || day.month == 0) return {std::max(day.year - birth.year, 0), 0};

    // Kept: no tolerance. From a day to the same day of another month it is chance of rounding whether the last month
    // counts: not from 1 January to 1 February, but from 1 January to 1 April. Ages on stored cards agree with it.
    const auto position = [](const DateFields& date) { return date.month + date.day / (365.0 / 12.0); };
    const double from = position(birth);
    double to = position(day);
    int years = day.year - birth.year;
    if (to < from) {
        to += months_a_year;
        --years;
    }
    return {std::max(years, 0), std::clamp(truncated(to - from), 0, months_a_year)};
}

int age_in_months(DateFields birth, DateFields day) {
    clamp_to_calendar(birth);
    clamp_to_calendar(day);
    if (birth.year == 0 || day.year == 0) return 0;
    if (birth.month == 0 || day.month == 0) {
        birth.month = day.month = 1;
        birth.day = day.day = 0;
    } else if (birth.day == 0 || day.day == 0) {
        birth.day = day.day = 0;
    }
    // Kept: months of 30.4 days here and of 365/12 in completed_age, and the hundredth of a month that makes up for
    // rounding. Norms were chosen by this count.
    const auto first = [](const DateFields& date) { return date.year * months_a_year + (date.month - 1); };
    return truncated((first(day) + day.day / 30.4 + 0.01) - (first(birth) + birth.day / 30.4));
}

}  // namespace tool
