// Dates as they are stored: text of eight digits, YYYYMMDD. None of this asks whether there is such a day.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// What a date says, 0 where it says nothing.
struct DateFields {
    int year = 0, month = 0, day = 0;
};

inline constexpr std::size_t date_digits = 8, year_month_digits = 6;

// With zeros behind it up to `digits` characters; a longer text stays.
std::string filled_up(std::string_view text, std::size_t digits);

// From the characters 0-3, 4-5 and 6-7, each read as far as it has digits: no blanks, no sign.
DateFields date_fields(std::string_view text);

DateFields today();

// Year, month and day with at least four, two and two digits and `between` between them.
std::string date_text(const DateFields& date, std::string_view between);

// For display, filled up with blanks: "2024/ 3/ 5", or with the signs for year, month and day in code page 932.
std::string slashed_date(const DateFields& date);
std::string japanese_date(const DateFields& date);

// The date of a text such as "98/1/2": what cannot be read is 0; years of two digits lie between 1980 and 2079.
DateFields typed_date(std::string_view text);

// Whether the date's month lies from month `from` to month `to`; its day counts for nothing, nor do the bounds' days.
// A date without a year lies in every range, one without a month is compared by years alone. Without a year `to` has
// no end, without a month it is the whole year.
bool in_months(DateFields date, DateFields from, DateFields to);

}  // namespace tool
