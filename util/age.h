// A patient's age, by two rules. Months beyond 12 count as 12, days beyond 31 as 31.
#pragma once

#include "util/stored_date.h"

namespace tool {

struct Age {
    int years = 0, months = 0;
};

// Completed years and months, for display; a month is 365/12 days. Not below 0. Without a month in either date the
// years are the difference of the years.
Age completed_age(DateFields birth, DateFields day);

// All completed months, for growth and norms; a month is 30.4 days. Negative when `day` lies before birth, 0 when
// either has no year. Without a month in either date both count from the start of their year, without a day of their
// month.
int age_in_months(DateFields birth, DateFields day);

}  // namespace tool
