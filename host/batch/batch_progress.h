// How far a batch has come, on a terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <ostream>

namespace cephtool {

// "12000 cases, 8100 a second, 2 min left": one line that is written over at every interval, the first time at the end
// of one, so that short work says nothing. Writes nothing unless `shown`.
class BatchProgress {
 public:
    BatchProgress(std::ostream& terminal, bool shown,
                  std::chrono::milliseconds interval = std::chrono::milliseconds(500))
        : terminal_(terminal), shown_(shown), interval_(interval) {}
    ~BatchProgress() { clear(); }
    BatchProgress(const BatchProgress&) = delete;
    BatchProgress& operator=(const BatchProgress&) = delete;

    // `done` is the part of the work that is done, 0 to 1, where that is known.
    void add(std::size_t cases, std::optional<double> done);
    void clear();

 private:
    using Clock = std::chrono::steady_clock;

    std::ostream& terminal_;
    const bool shown_;
    const std::chrono::milliseconds interval_;
    std::size_t cases_ = 0;
    bool visible_ = false;
    const Clock::time_point begin_ = Clock::now();
    Clock::time_point next_ = begin_ + interval_;
};

}  // namespace cephtool
