#include "base/eras.h"

#include <mutex>
#include <vector>

#include "base/error.h"
#include "base/path.h"
#include "base/program_folder.h"
#include "base/wording.h"

namespace cephtool {
namespace {

std::string number(unsigned value) {
    return std::to_string(value);
}

std::string shown_file() {
    return printable(utf8_from_path(era_file()));
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

std::filesystem::path era_file() {
    return program_folder() / "Era.dat";
}

std::optional<EraCalendar> program_eras() {
    static std::mutex guard;
    static std::filesystem::path read_file;
    static std::optional<EraCalendar> calendar;
    const std::lock_guard lock(guard);
    const std::filesystem::path file = era_file();
    if (calendar && file == read_file) return calendar;
    tool::Result<EraCalendar> found = EraCalendar::read(file);
    std::error_code failure;
    if (!found && std::filesystem::exists(file, failure)) {
        throw Error(ExitCode::bad_input, shown_file() + " is there, but can't be read: " + printable(found.reason()),
                    "Check that you may read it, and the disk.");
    }
    if (!found) return {};
    read_file = file;
    return calendar = *std::move(found);
}

EraCalendar required_eras() {
    if (std::optional<EraCalendar> calendar = program_eras()) return *std::move(calendar);
    throw Error(ExitCode::bad_input, "the table of Japanese eras is missing: " + shown_file(),
                "It comes with the program: copy it there, and write dates as 2012-03-31 until then.");
}

tool::Era era_at(const EraCalendar& calendar, std::size_t place) {
    const tool::Era& era = calendar.eras()[place];
    return {printable(era.code), printable(era.name)};
}

std::optional<EraDate> era_of(const EraCalendar& calendar, Date date) {
    const std::optional<tool::EraYearOfDay> found = calendar.era_of(date);
    if (!found) return {};
    const tool::Era era = era_at(calendar, found->era);
    return EraDate{era.code, era.name, found->year, date};
}

std::string list_of(const EraCalendar& calendar) {
    std::vector<std::string> eras;
    for (std::size_t place = 0; place < calendar.eras().size(); ++place) {
        const tool::Era era = era_at(calendar, place);
        eras.push_back(era.name + " (" + era.code + ")");
    }
    return joined(eras, ", ");
}

std::string era_text(const std::optional<EraCalendar>& calendar, Date date, std::string (*form)(const EraDate&)) {
    const std::optional<EraDate> era = calendar ? era_of(*calendar, date) : std::nullopt;
    return era ? form(*era) : std::string();
}

}  // namespace cephtool
