#include "host/output.h"

#include <UnreadFile.h>
#include <surface/whole_file.h>

#include <filesystem>
#include <fstream>

#include "base/error.h"
#include "base/library_name.h"
#include "base/path.h"
#include "base/system.h"
#include "base/wording.h"
#include "host/interruption.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

// Where the file is, or will be.
fs::path place_of(const fs::path& file) {
    std::error_code failure;
    return fs::weakly_canonical(fs::absolute(file, failure), failure);
}

bool is_same_file(const fs::path& one, const fs::path& other) {
    std::error_code failure;
    const bool same = fs::equivalent(one, other, failure);  // hard links, too
    if (!failure) return same && fs::is_regular_file(one, failure);
    const fs::path place = place_of(one);  // as yet there is none
    return !place.empty() && place == place_of(other);
}

}  // namespace

Error not_written(const std::string& path) {
    return {ExitCode::bad_input, shown_name(path) + " could not be written",
            "Check that the folder exists, that you may write there, and that the disk has room."};
}

Error link_in_circle(const std::string& path) {
    return {ExitCode::bad_command_line, printable(path) + " is a link that leads in a circle",
            "Give the output another name, or remove the link."};
}

void check_all_read() {
    const CString path = UnreadFile();
    if (path.IsEmpty()) return;
    throw Error(ExitCode::bad_input,
                shown_name(utf8_from_path(path_from_library(path))) + " is there, but can't be read",
                "Without it the results would be others. Check that you may read it, and the disk.");
}

void check_output(const std::string& output, const std::vector<std::string>& others) {
    if (output.empty() || output == "-") return;
    const fs::path file = path_from_utf8(output);
    std::error_code failure;
    if (!fs::exists(file, failure) && failure == std::errc::too_many_symbolic_link_levels) throw link_in_circle(output);
    for (const std::string& other : others) {
        const bool same = other == "-" ? is_standard_input(file) : is_same_file(file, path_from_utf8(other));
        if (other.empty() || !same) continue;
        throw Error(ExitCode::bad_command_line,
                    "the output would replace " + (other == "-" ? "the file that standard input comes from"
                                                                : printable(other) + ", which is named as well"),
                    "Give the output another name.");
    }
}

void write_result(const std::string& text, const std::string& path, std::ostream& out) {
    check_all_read();
    if (path.empty() || path == "-") {
        out << text;
        return;
    }
    const fs::path file = path_from_utf8(path);
    std::error_code failure;
    const auto there = fs::status(file, failure);
    if (fs::exists(there) && !fs::is_regular_file(there)) {  // a device or a pipe
        std::ofstream device(file, std::ios::binary);
        device << text;
        device.close();
        if (!device) throw not_written(path);
        return;
    }
    Interruption late;  // so that nothing half-written is left
    const std::string error = tool::write_whole_file(path, text);
    late.obey();
    if (!error.empty()) throw not_written(path);
}

}  // namespace cephtool
