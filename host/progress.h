// How far long work has come, on a terminal.
#pragma once

#include <chrono>
#include <ostream>
#include <string>

namespace cephtool {

// One line that is written over, once the work has taken `patience`. Writes nothing unless `shown`.
class Progress {
 public:
    // `things` in the plural: "pictures".
    Progress(std::ostream& terminal, bool shown, std::size_t total, std::string things,
             std::chrono::milliseconds patience = std::chrono::milliseconds(500));
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // One more is done.
    void step();
    // Takes the line away, so that something else can be written.
    void clear();

 private:
    std::ostream& terminal_;
    const bool shown_;
    const std::size_t total_;
    const std::string things_;
    std::size_t done_ = 0;
    bool visible_ = false;
    std::chrono::steady_clock::time_point next_;  // when the line is written again
};

}  // namespace cephtool
