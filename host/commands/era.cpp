// cephtool era: dates in Japanese eras, and the years of eras in the Western calendar.
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/columns.h"
#include "base/csv.h"
#include "base/date_reader.h"
#include "base/eras.h"
#include "base/wording.h"
#include "host/command_line.h"
#include "host/output.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int western_width = 12, code_width = 12;

struct ConvertedDate {
    Date date;
    std::optional<EraDate> era;
};

std::string table(const std::vector<ConvertedDate>& dates) {
    std::string text = left_aligned("Date", western_width) + left_aligned("Era", code_width) + "Japanese\n";
    for (const auto& [date, era] : dates) {
        text += left_aligned(text_of(date), western_width) + left_aligned(era ? code_text(*era) : "–", code_width) +
                (era ? japanese_text(*era) : "no era of the table") + "\n";
    }
    return text;
}

std::string json(const std::vector<ConvertedDate>& dates) {
    Json list = Json::array();
    for (const auto& [date, era] : dates) {
        Json row = {{"date", text_of(date)}};
        row["era"] = era ? Json(code_text(*era)) : Json(nullptr);
        row["japanese"] = era ? Json(japanese_text(*era)) : Json(nullptr);
        row["code"] = era ? Json(era->code) : Json(nullptr);
        row["name"] = era ? Json(era->name) : Json(nullptr);
        row["era_year"] = era ? Json(era->year) : Json(nullptr);
        list.push_back(row);
    }
    return Json({{"dates", list}}).dump(2) + "\n";
}

std::string csv(const std::vector<ConvertedDate>& dates) {
    std::string text = "date,era,japanese,code,name,era_year\r\n";
    for (const auto& [date, era] : dates) {
        text += text_of(date) + "," +
                (era ? csv_field(code_text(*era)) + "," + csv_field(japanese_text(*era)) + "," + csv_field(era->code) +
                           "," + csv_field(era->name) + "," + std::to_string(era->year)
                     : ",,,,") +
                "\r\n";
    }
    return text;
}

struct EraYear {
    std::string code, name;
    int era_year = 0, western_year = 0;
    Date first, last;  // of the days that are counted in it
};

EraYear era_year(const EraCalendar& calendar, const std::string& name, const std::string& year_text) {
    using namespace std::chrono;
    const std::optional<std::size_t> place = calendar.era_named(name);
    if (!place) {
        throw Error(ExitCode::bad_command_line, "there is no era " + in_quotes(name),
                    "The eras are " + list_of(calendar) + ".");
    }
    const std::optional<int> counted = era_year_from(year_text);
    if (!counted) {
        throw Error(ExitCode::bad_command_line, in_quotes(year_text) + " is no year of an era",
                    "Give a whole number, or 元 for the first.");
    }
    const std::optional<int> western = calendar.western_year(*place, *counted);
    const tool::Era era = era_at(calendar, *place);
    EraYear found{era.code, era.name, *counted, western.value_or(0), {}, {}};
    const year_month_day new_year(year(found.western_year), January, day(1));
    for (sys_days each = new_year; western && each < sys_days(new_year + years(1)); each += days(1)) {
        const Date date = each;
        if (!calendar.holds(*place, *counted, unsigned{date.month()}, unsigned{date.day()})) continue;
        if (!found.first.ok()) found.first = date;
        found.last = date;
    }
    if (!found.first.ok()) {
        const std::optional<EraDate> meant = western ? era_of(calendar, new_year) : std::nullopt;
        throw Error(
            ExitCode::bad_command_line, found.name + " (" + found.code + ") has no year " + std::to_string(*counted),
            meant ? "The year " + std::to_string(*western) + " is " + meant->code + std::to_string(meant->year) + "."
                  : "Check the year.");
    }
    return found;
}

std::string shown(const EraYear& year, ResultFormat format) {
    if (format == ResultFormat::json) {
        return Json{{"code", year.code},
                    {"name", year.name},
                    {"era_year", year.era_year},
                    {"western_year", year.western_year},
                    {"first", text_of(year.first)},
                    {"last", text_of(year.last)}}
                   .dump(2) +
               "\n";
    }
    if (format == ResultFormat::csv) {
        return "code,name,era_year,western_year,first,last\r\n" + csv_field(year.code) + "," + csv_field(year.name) +
               "," + std::to_string(year.era_year) + "," + std::to_string(year.western_year) + "," +
               text_of(year.first) + "," + text_of(year.last) + "\r\n";
    }
    return year.code + std::to_string(year.era_year) + " (" + year.name +
           (year.era_year == 1 ? "元" : std::to_string(year.era_year)) + "年) is " + std::to_string(year.western_year) +
           ", from " + text_of(year.first) + " to " + text_of(year.last) + "\n";
}

}  // namespace

ExitCode run_era(const Command& command, const Arguments& arguments, Streams& streams) {
    std::vector<std::string> dates, era_and_year;
    std::string output;
    ResultFormat format{};
    CommandLine line(command, "cephtool era 2024-03-05 S64.1.7", "cephtool era --to-western R 6");
    line.add_argument("DATE", dates, "2024-03-05, R6.3.5 or 令和6年3月5日");
    line.add_pair("--to-western", "CODE YEAR", era_and_year, "which year a year of an era is");
    line.add_format(format, output, {ResultFormat::table, ResultFormat::json, ResultFormat::csv});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    if (dates.empty() == era_and_year.empty()) {
        throw Error(ExitCode::bad_command_line, dates.empty() ? "a date is missing" : "dates and --to-western at once",
                    "Give dates, or --to-western with an era and its year: cephtool era --to-western R 6");
    }
    const EraCalendar calendar = required_eras();
    if (dates.empty()) {
        write_result(shown(era_year(calendar, era_and_year[0], era_and_year[1]), format), output, streams.out);
        return ExitCode::done;
    }
    std::vector<ConvertedDate> converted;
    for (const std::string& text : dates) {
        const Date date = read_date(text);
        converted.push_back({date, era_of(calendar, date)});
    }
    const auto form = format == ResultFormat::json ? json : format == ResultFormat::csv ? csv : table;
    write_result(form(converted), output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
