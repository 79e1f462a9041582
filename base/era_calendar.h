// Japanese eras for people: the library's calendar in UTF-8.
#pragma once

#include <JapEra.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace cephtool {

struct EraDate {
    std::string code, name;
    int year = 0;  // from 1
    Date date;     // the same day
};

// "R6.3.5"
std::string code_text(const EraDate& date);
// "令和6年3月5日"; the first year is 元年.
std::string japanese_text(const EraDate& date);

// "FILE is missing", the table beside the program that the library reads, or why it can't look there.
std::string why_no_eras();

class EraCalendar {
 public:
    // Nothing when the table is missing or out of the library's reach.
    static std::optional<EraCalendar> find();

    // Nothing for a day of no era.
    std::optional<EraDate> era_of(Date date) const;
    // Index of the era with this code, in capitals or not, or this name.
    std::optional<int> era_named(std::string_view name) const;

    // Of an era's index.
    const std::string& code(int era) const { return codes_.at(static_cast<std::size_t>(era)); }
    const std::string& name(int era) const { return names_.at(static_cast<std::size_t>(era)); }
    // Nothing beyond `last_year`. The era may not have lasted so long.
    std::optional<int> western_year(int era, int era_year) const;
    bool holds(int era, int era_year, int month, int day) const;

    // "明治 (M), 大正 (T)"
    std::string list() const;

 private:
    EraCalendar();

    CJapEra eras_;
    std::vector<std::string> codes_, names_;
};

// The calendar, or an Error that says where it should be.
EraCalendar required_era_calendar();

// The day in its era in the given form, "" without an era or a calendar.
std::string era_text(const std::optional<EraCalendar>& calendar, Date date, std::string (*form)(const EraDate&));

}  // namespace cephtool
