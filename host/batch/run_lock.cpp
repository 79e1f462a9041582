#include "host/batch/run_lock.h"

#include <ctime>
#include <fstream>
#include <string>
#include <string_view>

#include "base/error.h"
#include "base/path.h"
#include "base/system.h"
#include "base/wording.h"
#include "host/output.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view mark = "cephtool batch: ";

std::string text_of_now() {
    const std::time_t now = std::time(nullptr);
    char text[sizeof "2001-05-14 12:00"];
    const std::tm* const local = std::localtime(&now);
    return local && std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", local) > 0 ? text : "an unknown time";
}

// The first line, as far as anybody would write it.
std::string first_line(const fs::path& path) {
    std::string text(400, '\0');
    std::ifstream in(path, std::ios::binary);
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(in.gcount()));
    return text.substr(0, text.find('\n'));
}

}  // namespace

RunLock::RunLock(const fs::path& path) {
    const std::string name = printable(utf8_from_path(path));
    std::error_code failure;
    const fs::file_status there = fs::symlink_status(path, failure);
    const std::string before = fs::is_regular_file(there) ? first_line(path) : "";
    if (fs::exists(there) && (!fs::is_regular_file(there) || !(before.empty() || before.starts_with(mark)))) {
        throw Error(ExitCode::bad_command_line, name + " is no note of a run, and would be lost",
                    "Move it away, or give the output another name.");
    }
    outcome_ = file_.take(path, std::string(mark) + this_process() + ", since " + text_of_now() + "\n");
    if (outcome_ == HeldFile::Outcome::not_written) throw not_written(utf8_from_path(path));
    if (outcome_ != HeldFile::Outcome::held_by_another) return;
    const std::string now = first_line(path);
    throw Error(ExitCode::bad_command_line,
                "another run is writing this table" +
                    (now.starts_with(mark) ? ": " + printable(now.substr(mark.size())) : std::string()),
                "Wait for its end or stop it; --resume then goes on with what it has written.");
}

}  // namespace cephtool
