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
#include "base/eras.h"
#include "base/error.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// A folder of this process for the tables.
const std::filesystem::path& folder() {
    static const struct Folder {
        std::filesystem::path path;
        Folder() {
            path = std::filesystem::temp_directory_path() / ("date_fuzz." + std::to_string(std::random_device()()));
            std::filesystem::create_directory(path);
        }
        ~Folder() { std::filesystem::remove_all(path); }
    } folder;
    return folder.path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), size);
    static bool odd = false;  // two programs in turn, since a program keeps the table that it has read
    const std::filesystem::path program = folder() / ((odd = !odd) ? "a" : "b");
    std::filesystem::create_directory(program);
    SetModuleFileNameA((program / "program").string().c_str());
    std::ofstream(program / "Era.dat", std::ios::binary) << input.substr(std::min(end + 1, size));
    try {
        const cephtool::Date date = cephtool::read_date(input.substr(0, end));
        require(date.ok() && cephtool::read_date(cephtool::text_of(date)) == date);
        const auto era = cephtool::era_of(cephtool::required_eras(), date);
        require(!era || (era->year >= 1 && cephtool::japanese_text(*era).starts_with(era->name)));
        require(cephtool::months_at(date, date) == 0 && cephtool::years_at(date, date) == 0);
    } catch (const cephtool::Error& error) {
        require(!cephtool::shown(error).empty());
    }
    return 0;
}
