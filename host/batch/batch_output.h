// The files that a batch writes: OUT, one line a case, and beside it OUT.errors.csv, the cases that failed. Until all
// is done both end in ".part", and whatever stops the program, its whole lines are good: --resume goes on behind them.
// Until then they are their owner's alone; then they get the rights of the files whose place they take.
//
// 1. Every line tells the number of its case, and the numbers rise.
// 2. A failure is on the disk before a line of a later case is.
// 3. So the number of the last whole line says where to go on, and later failures are to be found again.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/batch/run_lock.h"
#include "platform/new_file.h"

namespace cephtool {

class BatchOutput {
 public:
    // `head` is what OUT begins with, `number_mark` what stands in front of a line's number. Throws an Error when OUT
    // is a link in a circle.
    BatchOutput(const std::string& path, std::string head, std::string number_mark);

    // Throws an Error when OUT can't be a file, or when something of somebody's would be lost.
    void check(const std::vector<std::string>& inputs) const;
    // Whether the file, which lies in a folder of inputs, is what an earlier run wrote. Throws an Error when it is
    // something else that OUT would replace.
    bool is_own(const std::string& file) const;

    // Keeps other runs away from here to the end. Throws an Error that names the one that is at work. False where that
    // can't be done.
    bool lock();

    // Whether an earlier run left something. Throws an Error when the name is that of something else.
    bool has_part() const;
    bool has_result() const;

    // A new table. Throws an Error when it can't be written.
    void begin();
    // Opens what an earlier run left and cuts it behind its last whole line. Throws an Error when that run wrote other
    // columns.
    void resume();

    // Of the last whole line when resuming, 0 when there was none.
    std::size_t last_number() const { return last_number_; }
    const std::string& last_line() const { return last_line_; }
    std::size_t failures() const { return failures_; }

    // Whole lines of successive cases, and the failures among them.
    void write(const std::string& lines, const std::string& failed, std::size_t failures);
    // Gives the files their names. Without a failure there is no table of them.
    void finish();

    // Names to show.
    std::string part() const;
    std::string failures_path() const;

 private:
    void check_failures_path(const std::filesystem::path& path) const;
    void begin_failures();
    void keep_failures_before(std::size_t number);

    std::filesystem::path path_, part_, failures_path_, failures_part_, lock_path_;
    std::string head_, number_mark_;
    std::optional<RunLock> lock_;
    tool::NewFile out_, failed_;
    std::size_t last_number_ = 0, failures_ = 0;
    std::string last_line_;
};

}  // namespace cephtool
