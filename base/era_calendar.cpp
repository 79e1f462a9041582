#include "base/era_calendar.h"

#include <CodePage.h>

#include <filesystem>

#include "base/error.h"
#include "base/path.h"
#include "base/program_folder.h"
#include "base/wording.h"

namespace cephtool {
namespace {

std::vector<std::string> utf8_texts(const CStringArray& texts) {
    std::vector<std::string> all;
    for (INT_PTR i = 0; i < texts.GetSize(); ++i) all.push_back(printable(Utf8FromCodePage932(texts[i])));
    return all;
}

std::string number(unsigned value) {
    return std::to_string(value);
}

// The file that the library reads.
std::string era_file() {
    return utf8_from_path(program_folder() / "Era.dat");
}

}  // namespace

std::string code_text(const EraDate& date) {
    return date.code + std::to_string(date.year) + "." + number(unsigned{date.date.month()}) + "." +
           number(unsigned{date.date.day()});
}

std::string japanese_text(const EraDate& date) {
    return date.name + (date.year == 1 ? "元" : std::to_string(date.year)) + "年" +
           number(unsigned{date.date.month()}) + "月" + number(unsigned{date.date.day()}) + "日";
}

std::string why_no_eras() {
    return library_finds_program() ? printable(era_file()) + " is missing"
                                   : "the path of the program is outside code page 932";
}

std::optional<EraCalendar> EraCalendar::find() {
    if (!library_finds_program()) return {};  // it would take the table of the current folder
    std::error_code failure;
    if (!std::filesystem::exists(path_from_utf8(era_file()), failure) && !failure) return {};
    return EraCalendar();
}

EraCalendar::EraCalendar() {
    CStringArray texts;
    eras_.GetEraCodeSet(&texts);
    codes_ = utf8_texts(texts);
    eras_.GetEraNameSet(&texts);
    names_ = utf8_texts(texts);
}

std::optional<EraDate> EraCalendar::era_of(Date date) const {
    int year = 0;
    const int era = eras_.GetEraYear(static_cast<int>(date.year()), static_cast<int>(unsigned{date.month()}),
                                     static_cast<int>(unsigned{date.day()}), &year);
    if (era < 0 || year < 1) return {};
    return EraDate{code(era), name(era), year, date};
}

std::optional<int> EraCalendar::era_named(std::string_view name) const {
    if (name.empty()) return {};
    for (std::size_t era = 0; era < codes_.size(); ++era)
        if (lower_case(codes_[era]) == lower_case(name) || names_[era] == name) return static_cast<int>(era);
    return {};
}

std::optional<int> EraCalendar::western_year(int era, int era_year) const {
    // The library caps the year; one that is capped or below 1 is no year.
    const int year = eras_.GetChristYear(era, era_year);
    if (year < 1 || (year == last_year && eras_.GetChristYear(era, era_year - 1) == last_year)) return {};
    return year;
}

bool EraCalendar::holds(int era, int era_year, int month, int day) const {
    return eras_.CheckEra(era, era_year, month, day) != 0;
}

std::string EraCalendar::list() const {
    std::vector<std::string> eras;
    for (std::size_t era = 0; era < codes_.size(); ++era) eras.push_back(names_[era] + " (" + codes_[era] + ")");
    return joined(eras, ", ");
}

EraCalendar required_era_calendar() {
    std::optional<EraCalendar> calendar = EraCalendar::find();
    if (!calendar && !library_finds_program()) {
        throw Error(ExitCode::bad_input, "there are no Japanese eras, since " + why_no_eras(),
                    "Move the program to a folder whose whole path is in plain or Japanese letters, and write dates as "
                    "2012-03-31 until then.");
    }
    if (!calendar) {
        throw Error(ExitCode::bad_input, "the table of Japanese eras is missing: " + printable(era_file()),
                    "It comes with the program: copy it there, and write dates as 2012-03-31 until then.");
    }
    return *calendar;
}

std::string era_text(const std::optional<EraCalendar>& calendar, Date date, std::string (*form)(const EraDate&)) {
    const std::optional<EraDate> era = calendar ? calendar->era_of(date) : std::nullopt;
    return era ? form(*era) : std::string();
}

}  // namespace cephtool
