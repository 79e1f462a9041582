// Days and ages. An age follows the library's count of months, so that the age that a report shows, the stages and the
// norms rest on one rule.
#pragma once

#include <chrono>
#include <string>

namespace cephtool {

// A day that exists, of the years 1 to 2500: the engine counts months in 16 bits, and eras to 2500.
using Date = std::chrono::year_month_day;
inline constexpr int last_year = 2500;

// "2024-03-05"
std::string text_of(Date date);
// "20240305", as the library takes it.
std::string stored_text(Date date);

// By the library's clock.
Date today();

// The months completed on `day`. Who was born on a day that the month lacks completes it on the first of the next one.
int months_at(Date day, Date birth);

struct Age {
    int years, months;
};

// The completed months, as years and months.
Age age_at(Date day, Date birth);

// The completed months divided by 12: a whole number on every birthday, and below the next one until then. Who was born
// on 29 February has birthday on 1 March in other years.
double years_at(Date day, Date birth);

// "12 years 3 months"
std::string text_of(const Age& age);

}  // namespace cephtool
