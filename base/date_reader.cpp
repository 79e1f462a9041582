#include "base/date_reader.h"

#include <algorithm>
#include <string>

#include "base/eras.h"
#include "base/error.h"
#include "base/utf8.h"
#include "base/wording.h"

namespace cephtool {
namespace {

using namespace std::chrono;

constexpr std::string_view decimal_digits = "0123456789", first_year_sign = "元";
constexpr std::size_t most_digits = 4;

// What stands behind year, month and day.
constexpr std::string_view marks[][3] = {{"-", "-", ""}, {"/", "/", ""}, {".", ".", ""}, {"年", "月", "日"}};

struct Written {
    std::string era;  // "" when there is none
    int year = 0, month = 0, day = 0;
    std::size_t year_digits = 0;
};

// Full-width forms of ASCII characters and blanks become these.
std::string plain(std::string_view text) {
    constexpr char32_t wide_blank = 0x3000, first_wide = 0xFF01, last_wide = 0xFF5E;
    std::string narrow;
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t c = next_character(text);
        if (c >= first_wide && c <= last_wide) {
            narrow += static_cast<char>(c - first_wide + '!');
        } else if (c == wide_blank) {
            narrow += ' ';
        } else {
            narrow += before.substr(0, before.size() - text.size());
        }
    }
    return std::string(trimmed(narrow));
}

// Takes `word` off the front of `text`.
bool take(std::string_view& text, std::string_view word) {
    if (!text.starts_with(word)) return false;
    text.remove_prefix(word.size());
    return true;
}

// 0 digits when there is no number.
std::size_t take_number(std::string_view& text, std::size_t most, int& value) {
    text = trimmed(text);
    const std::size_t digits = std::min({text.find_first_not_of(decimal_digits), text.size(), most});
    value = 0;
    for (const char c : text.substr(0, digits)) value = value * 10 + (c - '0');
    text.remove_prefix(digits);
    return digits;
}

bool take_year(std::string_view& text, Written& date) {
    text = trimmed(text);
    if (take(text, first_year_sign)) {
        date.year = 1;
        return true;
    }
    date.year_digits = take_number(text, most_digits, date.year);
    return date.year_digits > 0;
}

std::optional<Written> written(std::string_view text) {
    const std::size_t year_at = std::min({text.find_first_of(decimal_digits), text.find(first_year_sign), text.size()});
    std::string era(trimmed(text.substr(0, year_at)));
    if (era.ends_with('.')) era.pop_back();  // S.50.1.2
    text.remove_prefix(year_at);
    if (era.empty() && text.size() == 8 && text.find_first_not_of(decimal_digits) == std::string_view::npos) {
        Written date;
        date.year_digits = take_number(text, most_digits, date.year);
        take_number(text, 2, date.month);
        take_number(text, 2, date.day);
        return date;
    }
    for (const auto& [behind_year, behind_month, behind_day] : marks) {
        std::string_view rest = text;
        Written date;
        date.era = era;
        if (take_year(rest, date) && take(rest, behind_year) && take_number(rest, 2, date.month) > 0 &&
            take(rest, behind_month) && take_number(rest, 2, date.day) > 0 && take(rest, behind_day) && rest.empty()) {
            return date;
        }
    }
    return {};
}

Error no_date(std::string_view text, const std::string& why, const std::string& way_out) {
    return {ExitCode::bad_command_line, in_quotes(text) + " is no date" + (why.empty() ? "" : ": ") + why, way_out};
}

Date existing_day(std::string_view text, int y, const Written& written) {
    constexpr const char* names[] = {"January", "February", "March",     "April",   "May",      "June",
                                     "July",    "August",   "September", "October", "November", "December"};
    if (written.month < 1 || written.month > 12) {
        throw no_date(text, "there is no month " + std::to_string(written.month), "Months go from 1 to 12.");
    }
    const Date date{year(y), month(static_cast<unsigned>(written.month)), day(static_cast<unsigned>(written.day))};
    if (!date.ok()) {
        const std::string days = std::to_string(unsigned{year_month_day_last(date.year() / date.month() / last).day()});
        throw no_date(text, std::string(names[written.month - 1]) + " " + std::to_string(y) + " has " + days + " days",
                      "Give a day from 1 to " + days + ".");
    }
    return date;
}

Date day_of_era(std::string_view text, const Written& written) {
    const EraCalendar calendar = required_eras();
    const std::optional<std::size_t> place = calendar.era_named(written.era);
    if (!place)
        throw no_date(text, "there is no era " + in_quotes(written.era), "The eras are " + list_of(calendar) + ".");
    const std::optional<int> year = calendar.western_year(*place, written.year);
    const tool::Era era = era_at(calendar, *place);
    const std::string outside = "it lies outside " + era.name + " (" + era.code + ")";
    if (!year) throw no_date(text, outside, "Check the year.");
    const Date date = existing_day(text, *year, written);
    if (!calendar.holds(*place, written.year, unsigned{date.month()}, unsigned{date.day()})) {
        const std::optional<EraDate> meant = era_of(calendar, date);
        throw no_date(text, outside,
                      "The day " + text_of(date) + " is " +
                          (meant ? code_text(*meant) + ", " + japanese_text(*meant) : "of no era") + ".");
    }
    return date;
}

}  // namespace

Date read_date(std::string_view text) {
    const std::string narrow = plain(text);
    const std::optional<Written> found = written(narrow);
    if (!found) throw no_date(text, "", "Write 2012-03-31, 2012/3/31, 20120331 or, with the era, H24.3.31.");
    if (!found->era.empty()) return day_of_era(text, *found);
    if (found->year_digits != most_digits) {
        throw no_date(text, "its year does not have four digits", "Write 1998-01-02 or, with the era, H10.1.2.");
    }
    if (found->year < 1 || found->year > last_year) {
        throw no_date(text, "its year is not one of 1 to " + std::to_string(last_year), "Check the year.");
    }
    return existing_day(text, found->year, *found);
}

std::optional<int> era_year_from(std::string_view text) {
    const std::string narrow = plain(text);
    std::string_view rest = narrow;
    Written date;
    if (!take_year(rest, date) || !rest.empty()) return {};
    return date.year;
}

}  // namespace cephtool
