// Japanese eras for people, from the table beside the program.
#pragma once

#include <EraCalendar.h>

#include <filesystem>
#include <optional>
#include <string>

#include "base/date.h"

namespace cephtool {

using tool::EraCalendar;

struct EraDate {
    std::string code, name;
    int year = 0;  // from 1
    Date date;     // the same day
};

// "R6.3.5"
std::string code_text(const EraDate& date);
// "令和6年3月5日"; the first year is 元年.
std::string japanese_text(const EraDate& date);

std::filesystem::path era_file();

// Nothing when there is no table; an Error when it can't be read. What was read once is kept.
std::optional<EraCalendar> program_eras();
// An Error when there is none.
EraCalendar required_eras();

// Of a place in the calendar, fit to be shown.
tool::Era era_at(const EraCalendar& calendar, std::size_t place);
// Nothing for a day of no era.
std::optional<EraDate> era_of(const EraCalendar& calendar, Date date);
// "明治 (M), 大正 (T)"
std::string list_of(const EraCalendar& calendar);

// The day in its era in the given form, "" without an era or a calendar.
std::string era_text(const std::optional<EraCalendar>& calendar, Date date, std::string (*form)(const EraDate&));

}  // namespace cephtool
