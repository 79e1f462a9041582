#include "host/batch/batch_progress.h"

#include <string>

#include "base/numbers.h"

namespace cephtool {
namespace {

std::string duration_text(double seconds) {
    constexpr double minute = 60, hour = 3600;
    if (seconds < 2 * minute) return with_decimals(seconds, 0) + " s";
    if (seconds < 2 * hour) return with_decimals(seconds / minute, 0) + " min";
    return with_decimals(seconds / hour, 1) + " h";
}

}  // namespace

void BatchProgress::add(std::size_t cases, std::optional<double> done) {
    cases_ += cases;
    const Clock::time_point now = Clock::now();
    if (!shown_ || now < next_) return;
    next_ = now + interval_;
    const double seconds = std::chrono::duration<double>(now - begin_).count();
    terminal_ << "\r\x1B[K" << cases_ << " cases, " << with_decimals(static_cast<double>(cases_) / seconds, 0)
              << " a second";
    if (done && *done > 0) terminal_ << ", " << duration_text(seconds * (1 - *done) / *done) << " left";
    terminal_ << std::flush;
    visible_ = true;
}

void BatchProgress::clear() {
    if (visible_) terminal_ << "\r\x1B[K" << std::flush;
    visible_ = false;
}

}  // namespace cephtool
