#include "util/era_table.h"

#include <algorithm>

#include "EraCalendar.h"
#include "platform/code_page.h"
#include "platform/folder_file.h"
#include "platform/number_text.h"
#include "platform/settings_file.h"
#include "platform/settings_form.h"
#include "platform/system.h"
#include "platform/text.h"
#include "util/era_calendar.h"

namespace tool {
namespace {

constexpr int most_eras = 1000, last_western_year = 2500;
constexpr std::size_t most_bytes = 100;

}  // namespace

EraTable read_era_table(const std::function<std::string(const char* section, const char* key)>& value) {
    const auto entry = [&](const char* section, int key) {
        return CString(value(section, print_int(key).c_str()).substr(0, most_bytes).c_str());
    };
    const int eras = std::clamp(static_cast<int>(read_leading_integer(value("MAIN", "n")).value), 0, most_eras);
    EraTable table;
    table.ranges.Add(entry("ERA_RANGE", -1));
    for (int era = 0; era < eras; ++era) {
        table.ranges.Add(entry("ERA_RANGE", era));
        table.names.Add(entry("ERA_NAME", era));
        table.codes.Add(entry("ERA_CODE", era));
    }
    return table;
}

struct EraCalendar::Body {
    std::vector<Era> eras;
    CStringArray ranges;

    // Of an era's place; nothing outside the table, or for a text that is no span.
    std::optional<EraSpan> span(std::size_t era) const {
        if (era >= eras.size()) return {};
        return era_span(ranges[static_cast<INT_PTR>(era) + 1].View());
    }
};

EraCalendar EraCalendar::from_text(std::string_view file) {
    const std::string text = settings_text(std::string(file));
    const EraTable table = read_era_table([&text](const char* section, const char* key) {
        return std::string(setting(text, section, key).value_or(""));
    });
    auto body = std::make_shared<Body>();
    for (INT_PTR era = 0; era < table.names.GetSize(); ++era)
        body->eras.push_back(
            {utf8_from_code_page(table.codes[era].View()), utf8_from_code_page(table.names[era].View())});
    body->ranges.Copy(table.ranges);
    return EraCalendar(std::move(body));
}

Result<EraCalendar> EraCalendar::read(const std::filesystem::path& file) {
    const auto text = read_file_at(file, largest_text_file);
    if (!text) return Failure{utf8_from_code_page(error_text(last_error()))};
    return from_text(*text);
}

std::span<const Era> EraCalendar::eras() const {
    return body_->eras;
}

std::optional<EraYearOfDay> EraCalendar::era_of(std::chrono::year_month_day day) const {
    const DateFields date{int{day.year()}, static_cast<int>(unsigned{day.month()}),
                          static_cast<int>(unsigned{day.day()})};
    const auto found = era_year(body_->ranges, date);
    if (!found || found->entry < 1 || found->year < 1) return {};
    return EraYearOfDay{static_cast<std::size_t>(found->entry) - 1, found->year};
}

std::optional<std::size_t> EraCalendar::era_named(std::string_view name) const {
    if (name.empty()) return {};
    const auto found = std::ranges::find_if(
        body_->eras, [name](const Era& era) { return equal_ignoring_case(era.code, name) || era.name == name; });
    if (found == body_->eras.end()) return {};
    return static_cast<std::size_t>(found - body_->eras.begin());
}

std::optional<int> EraCalendar::western_year(std::size_t era, int era_year) const {
    if (era >= body_->eras.size()) return {};
    const int year = tool::western_year(body_->span(era).value_or(EraSpan{}).first_year(), era_year);
    return year >= 1 && year <= last_western_year ? std::optional(year) : std::nullopt;
}

bool EraCalendar::holds(std::size_t era, int era_year, unsigned month, unsigned day) const {
    const std::optional<EraSpan> span = body_->span(era);
    if (!span) return false;
    const int year = tool::western_year(span->first_year(), era_year);
    return span->holds(era_day({year, static_cast<int>(month), static_cast<int>(day)}));
}

}  // namespace tool
