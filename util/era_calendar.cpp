#include "util/era_calendar.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/number_text.h"

namespace tool {
namespace {

constexpr std::size_t day_length = 10, open_length = day_length + 1, closed_length = 2 * day_length + 1;
constexpr std::string_view first_of_all_days = "0001.01.01", last_of_all_days = "9999.12.31";

int saturated(std::int64_t year) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(year, Limits::min(), Limits::max()));
}

}  // namespace

int EraSpan::first_year() const {
    return read_int(first.substr(0, 4));
}

int EraSpan::year_in_era(int year) const {
    return first_year() < 2 ? 0 : saturated(std::int64_t{year} - first_year() + 1);
}

std::optional<EraSpan> era_span(std::string_view text) {
    if (text.size() == closed_length) return EraSpan{text.substr(0, day_length), text.substr(open_length)};
    if (text.size() != open_length) return {};
    if (text.starts_with('-')) return EraSpan{first_of_all_days, text.substr(1)};
    return EraSpan{text.substr(0, day_length), last_of_all_days};
}

std::string era_day(DateFields date) {
    if (date.month == 0) date.month = 1;
    if (date.day == 0) date.day = 1;
    return date_text(date, ".");
}

std::optional<EraYear> era_year(const CStringArray& spans, const DateFields& date) {
    const std::string day = era_day(date);
    for (int entry = 0; entry < spans.GetSize(); ++entry) {
        const std::string_view text = spans[entry].View();
        if (text.size() < open_length) continue;
        // An entry of a length that no span has holds no day.
        const std::optional<EraSpan> span = era_span(text);
        if (span && span->holds(day)) return EraYear{entry, span->year_in_era(date.year)};
    }
    return {};
}

int western_year(int first_year, int era_year) {
    return saturated(std::int64_t{first_year} + era_year - 1);
}

}  // namespace tool
