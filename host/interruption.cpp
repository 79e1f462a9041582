#include "host/interruption.h"

#include <csignal>

namespace cephtool {
namespace {

volatile std::sig_atomic_t was_asked = 0;

extern "C" void take_down(int signal) {
    was_asked = 1;
    std::signal(signal, SIG_DFL);
}

}  // namespace

Interruption::Interruption() : before_(std::signal(SIGINT, take_down)) {
    was_asked = 0;
}

Interruption::~Interruption() {
    std::signal(SIGINT, before_ == SIG_ERR ? SIG_DFL : before_);
}

bool Interruption::asked() const {
    return was_asked != 0;
}

}  // namespace cephtool
