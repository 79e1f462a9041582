// Addition of this project: the Japanese eras of an era table (docs/era_calendar.md), read once. Texts are UTF-8.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Result.h"
#include "framework/export.h"

namespace tool {

struct Era {
    std::string code, name;  // "R", "令和"
};

struct EraYearOfDay {
    std::size_t era = 0;  // place in eras()
    int year = 0;         // from 1
};

// Never changes, and may be shared by threads; copies share what was read. Years go to 2500, the last that the engine
// counts eras to.
class TOOL_API EraCalendar {
 public:
    static Result<EraCalendar> read(const std::filesystem::path& file);
    // From the bytes of a table in code page 932.
    static EraCalendar from_text(std::string_view table);

    std::span<const Era> eras() const;  // in the order of the table

    // Nothing for a day of no era.
    std::optional<EraYearOfDay> era_of(std::chrono::year_month_day day) const;
    // The era with this code, in capitals or not, or this name.
    std::optional<std::size_t> era_named(std::string_view name) const;
    // The western year of an era's year; nothing outside 1 to 2500. The era may not have lasted so long.
    std::optional<int> western_year(std::size_t era, int era_year) const;
    // Whether the era holds the day, which is counted in its years.
    bool holds(std::size_t era, int era_year, unsigned month, unsigned day) const;

 private:
    struct Body;
    explicit EraCalendar(std::shared_ptr<const Body> body) : body_(std::move(body)) {}
    std::shared_ptr<const Body> body_;
};

}  // namespace tool
