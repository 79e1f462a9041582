// Dates as people write them:
//
// 1. 2024-03-05, 2024/3/5, 2024.3.5, 2024年3月5日 or 20240305: the year has four digits.
// 2. R6.3.5, R.6.3.5, R6-3-5, R6/3/5, 令和6年3月5日: code or name of an era, year, month and day. The first year is 1
// or 元.
// 3. Digits, letters and signs may be full-width; there may be blanks in front of a number.
// 4. The day exists, and lies in the era it is counted in.
#pragma once

#include <optional>
#include <string_view>

#include "base/date.h"

namespace cephtool {

// Throws an Error that says what is wrong with the date and how it is meant to be.
Date read_date(std::string_view text);

// The year of an era: up to four digits, or 元.
std::optional<int> era_year_from(std::string_view text);

}  // namespace cephtool
