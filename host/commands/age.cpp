// cephtool age: how old somebody is, by both of the library's rules.
#include <Tools.h>

#include <nlohmann/json.hpp>
#include <ostream>

#include "base/columns.h"
#include "base/csv.h"
#include "base/date_reader.h"
#include "base/eras.h"
#include "base/path.h"
#include "base/wording.h"
#include "host/command_line.h"
#include "host/output.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* years_rule = "CaclAge, for display: a month is 365/12 days, without tolerance";
constexpr const char* months_rule = "CalcAge, for stages and norms: a month is 30.4 days, with a tolerance of 0.01";

struct AgeResult {
    Date birth, day;
    bool day_is_today = false;
    Age age{};             // by years_rule
    int total_months = 0;  // by months_rule
    std::string birth_era = {}, day_era = {};
};

AgeResult result_of(Date birth, std::optional<Date> given_day) {
    AgeResult result{birth, given_day.value_or(today()), !given_day};
    CTools::CaclAge(stored_text(birth).c_str(), stored_text(result.day).c_str(), &result.age.years, &result.age.months);
    result.total_months = months_at(result.day, birth);
    return result;
}

std::string line(const std::string& what, const std::string& value, const std::string& behind = {}) {
    return left_aligned(what, 11) + (behind.empty() ? value : left_aligned(value, 12) + behind) + "\n";
}

std::string paragraph(const std::string& text) {
    return wrapped(text, page_width, "") + "\n";
}

std::string table(const AgeResult& result) {
    std::string text = line("Born", text_of(result.birth), result.birth_era) +
                       line(result.day_is_today ? "Today" : "On", text_of(result.day), result.day_era) +
                       line("Age", text_of(result.age)) + line("In months", std::to_string(result.total_months)) +
                       "\n" + paragraph(std::string("Age: ") + years_rule + ".") +
                       paragraph(std::string("In months: ") + months_rule + ".");
    if (result.age.years * 12 + result.age.months != result.total_months) {
        text += paragraph(
            "Here the two differ: a month ends on the very day, and the first rule loses it to rounding. Stages, norms "
            "and the ages in reports go by the second.");
    }
    return text;
}

std::string json(const AgeResult& result) {
    const auto era = [](const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); };
    return Json{{"birth", text_of(result.birth)},    {"birth_era", era(result.birth_era)},
                {"day", text_of(result.day)},        {"day_era", era(result.day_era)},
                {"years", result.age.years},         {"months", result.age.months},
                {"years_and_months_by", years_rule}, {"total_months", result.total_months},
                {"total_months_by", months_rule}}
               .dump(2) +
           "\n";
}

std::string csv(const AgeResult& result) {
    return "birth,birth_era,day,day_era,years,months,total_months\r\n" + text_of(result.birth) + "," +
           csv_field(result.birth_era) + "," + text_of(result.day) + "," + csv_field(result.day_era) + "," +
           std::to_string(result.age.years) + "," + std::to_string(result.age.months) + "," +
           std::to_string(result.total_months) + "\r\n";
}

}  // namespace

ExitCode run_age(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string birth, day, output;
    ResultFormat format{};
    CommandLine line(command, "cephtool age 2001-05-14 2013-08-20", "cephtool age H13.5.14 --format json");
    line.add_argument("BIRTH", birth, "day of birth, such as 2001-05-14 or H13.5.14").required();
    line.add_argument("DAY", day, "day that the age is asked for; else today");
    line.add_format(format, output, {ResultFormat::table, ResultFormat::json, ResultFormat::csv});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    AgeResult result = result_of(read_date(birth), day.empty() ? std::nullopt : std::optional(read_date(day)));
    if (result.day < result.birth) {
        throw Error(ExitCode::bad_command_line, text_of(result.day) + " lies before birth, " + text_of(result.birth),
                    "Give the day of birth first.");
    }
    const std::optional<EraCalendar> calendar = program_eras();
    if (!calendar) streams.err << "note: no eras, since " << printable(utf8_from_path(era_file())) << " is missing\n";
    const auto era_form = format == ResultFormat::table ? japanese_text : code_text;
    result.birth_era = era_text(calendar, result.birth, era_form);
    result.day_era = era_text(calendar, result.day, era_form);
    const auto form = format == ResultFormat::json ? json : format == ResultFormat::csv ? csv : table;
    write_result(form(result), output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
