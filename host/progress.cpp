#include "host/progress.h"

namespace cephtool {

Progress::Progress(std::ostream& terminal, bool shown, std::size_t total, std::string things,
                   std::chrono::milliseconds patience)
    : terminal_(terminal),
      shown_(shown),
      total_(total),
      things_(std::move(things)),
      next_(std::chrono::steady_clock::now() + patience) {}

void Progress::step() {
    ++done_;
    if (!shown_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(100);
    terminal_ << "\r" << done_ << " of " << total_ << " " << things_ << std::flush;
    visible_ = true;
}

void Progress::clear() {
    if (visible_) terminal_ << "\r\x1b[K" << std::flush;
    visible_ = false;
}

}  // namespace cephtool
