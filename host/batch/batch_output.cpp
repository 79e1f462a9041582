#include "host/batch/batch_output.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "base/error.h"
#include "base/path.h"
#include "base/wording.h"
#include "host/batch/batch_format.h"
#include "host/output.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view failures_head = "case,place,message,advice\r\n";

std::string shown(const fs::path& path) {
    return printable(utf8_from_path(path));
}

Error not_written(const fs::path& path) {
    return {
        ExitCode::bad_input, shown(path) + " could not be written",
        "Check that the folder exists, that you may write there, and that the disk has room; --resume then goes on."};
}

Error not_read() {
    return {ExitCode::bad_input, "what the run before has written can't be read",
            "Check the disk and the rights of the two files that end in .part; nothing in them was changed."};
}

fs::path with_ending(fs::path path, const char* ending) {
    return path += ending;
}

bool begins_with(const fs::path& path, std::string_view text) {
    std::ifstream in(path, std::ios::binary);
    std::string start(text.size(), '\0');
    return in.read(start.data(), static_cast<std::streamsize>(start.size())) && start == text;
}

// A link stays one.
fs::path written_path(const std::string& path) {
    const std::optional<fs::path> written = tool::behind_links(path_from_utf8(path));
    if (!written) throw link_in_circle(path);
    return *written;
}

// The number behind `mark`, 0 when there is none.
std::size_t number_of(std::string_view line, std::string_view mark) {
    std::size_t number = 0;
    if (line.starts_with(mark)) std::from_chars(line.data() + mark.size(), line.data() + line.size(), number);
    return number;
}

// Where the last line that ends before `end` begins.
std::uintmax_t line_start(std::istream& in, std::uintmax_t end) {
    constexpr std::uintmax_t block_size = 1 << 16;
    std::string block;
    while (end > 0) {
        const std::uintmax_t from = end - std::min(end, block_size);
        block.resize(static_cast<std::size_t>(end - from));
        in.clear();
        in.seekg(static_cast<std::streamoff>(from));
        in.read(block.data(), static_cast<std::streamsize>(block.size()));
        if (!in) throw not_read();
        const std::size_t found = block.rfind('\n');
        if (found != std::string::npos) return from + found + 1;
        end = from;
    }
    return 0;
}

std::string bytes_of(const fs::path& path, std::uintmax_t from, std::uintmax_t to) {
    std::ifstream in(path, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(to - from), '\0');
    in.seekg(static_cast<std::streamoff>(from));
    if (!in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) throw not_read();
    return bytes;
}

}  // namespace

BatchOutput::BatchOutput(const std::string& path, std::string head, std::string number_mark)
    : path_(written_path(path)),
      part_(with_ending(path_, ".part")),
      failures_path_(with_ending(path_, ".errors.csv")),
      failures_part_(with_ending(failures_path_, ".part")),
      lock_path_(with_ending(path_, ".lock")),
      head_(std::move(head)),
      number_mark_(std::move(number_mark)) {}

void BatchOutput::check(const std::vector<std::string>& inputs) const {
    std::error_code failure;
    const fs::file_status there = fs::status(path_, failure);
    if (fs::exists(there) && !fs::is_regular_file(there)) {
        throw Error(ExitCode::bad_command_line,
                    shown(path_) + (fs::is_directory(there) ? " is a folder" : " is no file on a disk"),
                    "The table of a batch needs a file: name one behind -o.");
    }
    constexpr fs::perms any_write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if (fs::exists(there) && (there.permissions() & any_write) == fs::perms::none) throw not_written(path_);
    for (const fs::path& file : {path_, part_, failures_path_, failures_part_, lock_path_})
        check_output(utf8_from_path(file), inputs);
    check_failures_path(failures_path_);
    check_failures_path(failures_part_);
}

// A run can have been stopped in the middle of the head.
void BatchOutput::check_failures_path(const fs::path& path) const {
    std::error_code failure;
    const fs::file_status there = fs::symlink_status(path, failure);
    const auto is_own = [&] {
        const std::uintmax_t size = fs::file_size(path, failure);
        const bool may_be_cut = path == failures_part_ && size < failures_head.size();
        return begins_with(path, may_be_cut ? failures_head.substr(0, size) : failures_head);
    };
    if (!fs::exists(there) || (fs::is_regular_file(there) && is_own())) return;
    throw Error(ExitCode::bad_command_line, shown(path) + " is no table of failed cases, and would be lost",
                "Move it away, or give the output another name.");
}

bool BatchOutput::lock() {
    return lock_.emplace(lock_path_).keeps_others_away();
}

bool BatchOutput::is_own(const std::string& file) const {
    std::error_code failure;
    const fs::path path = path_from_utf8(file);
    if (fs::equivalent(path, failures_path_, failure)) return true;
    if (!fs::equivalent(path, path_, failure)) return false;
    const bool of_batch = begins_with(path, csv_start) || begins_with(path, json_lines_start);
    if (!of_batch && !fs::is_empty(path, failure)) check_output(file, {file});
    return true;
}

bool BatchOutput::has_part() const {
    std::error_code failure;
    const fs::file_status there = fs::symlink_status(part_, failure);
    if (!fs::exists(there) || fs::is_regular_file(there)) return fs::exists(there);
    throw Error(ExitCode::bad_command_line, shown(part_) + " is no file, and no run can have left it",
                "Move it away, or give the output another name.");
}

bool BatchOutput::has_result() const {
    std::error_code failure;
    return fs::exists(path_, failure);
}

std::string BatchOutput::part() const {
    return utf8_from_path(part_);
}

std::string BatchOutput::failures_path() const {
    return utf8_from_path(failures_path_);
}

void BatchOutput::begin_failures() {
    std::error_code failure;
    fs::remove(failures_part_, failure);  // a run's that ended before it had written a case
    if (!failed_.create(failures_part_, tool::Access::owner) || !failed_.write(failures_head))
        throw not_written(failures_part_);
}

void BatchOutput::begin() {
    begin_failures();
    std::error_code failure;
    fs::remove(part_, failure);
    if (!out_.create(part_, tool::Access::owner) || !out_.write(head_)) throw not_written(part_);
}

void BatchOutput::resume() {
    std::ifstream in(part_, std::ios::binary);
    std::error_code failure;
    const std::uintmax_t size = fs::file_size(part_, failure);
    if (failure) throw not_read();
    const std::uintmax_t whole = line_start(in, size);
    const std::string start = head_ + number_mark_;
    if (bytes_of(part_, 0, std::min<std::uintmax_t>(size, start.size())) != start.substr(0, size)) {
        throw Error(ExitCode::bad_command_line, shown(part_) + " has other columns than this command line gives",
                    "Resume with the options of the first run, or delete it to begin anew.");
    }
    if (whole < head_.size()) {
        in.close();
        return begin();
    }
    if (whole > head_.size()) {
        last_line_ = bytes_of(part_, std::max<std::uintmax_t>(line_start(in, whole - 1), head_.size()), whole);
        last_number_ = number_of(last_line_, number_mark_);
        if (last_number_ == 0) {
            throw Error(ExitCode::bad_input, "the last whole line of " + shown(part_) + " is none of a batch",
                        "Delete the file to begin anew.");
        }
    }
    in.close();
    // A run that was stopped between the two renamings of its end.
    if (!fs::exists(failures_part_, failure)) fs::rename(failures_path_, failures_part_, failure);
    keep_failures_before(last_number_);
    if (!out_.go_on(part_) || !out_.cut(whole)) throw not_written(part_);
}

void BatchOutput::keep_failures_before(std::size_t number) {
    std::uintmax_t kept = 0;
    failures_ = 0;
    {
        std::ifstream in(failures_part_, std::ios::binary);
        if (!in && fs::exists(failures_part_)) throw not_read();
        for (std::string line; std::getline(in, line) && !in.eof();) {
            if (kept > 0 && number_of(line, "") >= number) break;
            failures_ += kept > 0;
            kept += line.size() + 1;
        }
        if (in.bad()) throw not_read();
    }
    if (kept == 0) return begin_failures();
    if (!failed_.go_on(failures_part_) || !failed_.cut(kept)) throw not_written(failures_part_);
}

void BatchOutput::write(const std::string& lines, const std::string& failed, std::size_t failures) {
    check_all_read();
    failures_ += failures;
    if (!failed_.write(failed)) throw not_written(failures_part_);
    if (!out_.write(lines)) throw not_written(part_);
}

void BatchOutput::finish() {
    check_failures_path(failures_path_);
    std::error_code failure;
    if (failures_ > 0) {
        if (!failed_.take_place(failures_path_)) throw not_written(failures_path_);
    } else {
        failed_.close();
        for (const fs::path& path : {failures_path_, failures_part_})
            if (!failure) fs::remove(path, failure);
    }
    if (failure || !out_.take_place(path_)) throw not_written(path_);
    lock_.reset();
}

}  // namespace cephtool
