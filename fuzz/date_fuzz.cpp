// A date as somebody writes it, and the era table it is read with: the first line is the date, what follows the table.
#include <Framework.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "base/date_reader.h"
#include "base/era_calendar.h"
#include "base/error.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// A folder of this process with the table that the library reads.
const std::filesystem::path& folder() {
    static const struct Folder {
        std::filesystem::path path;
        Folder() {
            path = std::filesystem::temp_directory_path() / ("date_fuzz." + std::to_string(std::random_device()()));
            std::filesystem::create_directory(path);
            SetModuleFileNameA((path / "program").string().c_str());
        }
        ~Folder() { std::filesystem::remove_all(path); }
    } folder;
    return folder.path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), size);
    std::ofstream(folder() / "Era.dat", std::ios::binary) << input.substr(std::min(end + 1, size));
    try {
        const cephtool::Date date = cephtool::read_date(input.substr(0, end));
        require(date.ok() && cephtool::read_date(cephtool::text_of(date)) == date);
        const auto calendar = cephtool::EraCalendar::find();
        const auto era = calendar->era_of(date);
        require(!era || (era->year >= 1 && cephtool::japanese_text(*era).starts_with(era->name)));
        require(cephtool::months_at(date, date) == 0 && cephtool::years_at(date, date) == 0);
    } catch (const cephtool::Error& error) {
        require(!cephtool::shown(error).empty());
    }
    return 0;
}
