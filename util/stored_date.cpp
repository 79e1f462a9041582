#include "util/stored_date.h"

#include <algorithm>
#include <cstdio>

#include "platform/number_text.h"
#include "platform/system.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr int last_year = 9999, months_a_year = 12;

int leading_digits(std::string_view text) {
    int value = 0;
    for (const char c : text) {
        if (!is_digit(c)) break;
        value = value * 10 + (c - '0');
    }
    return value;
}

// Two digits of a year belong to 1980 to 2079.
int widened(int year) {
    return year + (year < 80 ? 2000 : 1900);
}

std::string filled(int value, int width, char fill) {
    char text[16];
    std::snprintf(text, sizeof text, fill == '0' ? "%0*d" : "%*d", width, value);
    return text;
}

std::string shown(const DateFields& date, std::string_view behind_year, std::string_view behind_month,
                  std::string_view behind_day) {
    return filled(date.year, 4, ' ').append(behind_year) + filled(date.month, 2, ' ').append(behind_month) +
           filled(date.day, 2, ' ').append(behind_day);
}

}  // namespace

std::string filled_up(std::string_view text, std::size_t digits) {
    std::string whole(text);
    if (whole.size() < digits) whole.resize(digits, '0');
    return whole;
}

DateFields date_fields(std::string_view text) {
    const auto field = [text](std::size_t at, std::size_t count) {
        return at < text.size() ? leading_digits(text.substr(at, count)) : 0;
    };
    return {field(0, 4), field(4, 2), field(6, 2)};
}

DateFields today() {
    const LocalTime now = local_time();
    // Kept: the year by way of its last two digits, so that 2080 counts as 1980. Today is thus read as typed dates are.
    return {widened(now.year % 100), now.month, now.day};
}

std::string date_text(const DateFields& date, std::string_view between) {
    return filled(date.year, 4, '0').append(between) + filled(date.month, 2, '0').append(between) +
           filled(date.day, 2, '0');
}

std::string slashed_date(const DateFields& date) {
    return shown(date, "/", "/", "");
}

std::string japanese_date(const DateFields& date) {
    return shown(date, "\x94\x4E", "\x8C\x8E", "\x93\xFA");  // 年, 月, 日
}

DateFields typed_date(std::string_view text) {
    constexpr std::size_t longest_short_date = 9;
    DateFields date;
    std::string_view rest = text;
    for (int* const field : {&date.year, &date.month, &date.day}) {
        if (field != &date.year) {
            if (!rest.starts_with('/')) break;
            rest.remove_prefix(1);
        }
        const std::size_t used = read_leading_integer(rest).used;
        if (used == 0) break;
        *field = read_int(rest);
        rest.remove_prefix(used);
    }
    // Kept: also a text without any date, which so becomes "20000000". Stored records hold it.
    if (text.size() <= longest_short_date && date.year < 100) date.year = widened(date.year);
    return date;
}

bool in_months(DateFields date, DateFields from, DateFields to) {
    if (to.year == 0) to.year = last_year;
    if (to.month == 0) to.month = months_a_year;
    for (DateFields* const each : {&date, &from, &to}) each->month = std::min(each->month, months_a_year);
    if (date.year == 0) return true;
    // Kept: without a month the bounds' months count for nothing, even where the year is a bound's own.
    if (date.month == 0) return from.year <= date.year && date.year <= to.year;
    // Thirteen months a year leave room for month 0, which lies in front of January.
    const auto key = [](const DateFields& month) { return month.year * (months_a_year + 1) + month.month; };
    return key(from) <= key(date) && key(date) <= key(to);
}

}  // namespace tool
