#include "host/interruption.h"

#include <csignal>

namespace cephtool {
namespace {

volatile std::sig_atomic_t came = 0;

extern "C" void take_down(int signal) {
    came = signal;
    std::signal(signal, SIG_DFL);
}

struct Held {
    int signal;
    void (*handler)(int);
};

const Held held[] = {
    {SIGINT, take_down},
    {SIGTERM, take_down},
#ifdef SIGHUP
    {SIGHUP, take_down},
    {SIGXFSZ, SIG_IGN},  // a file as large as the user's limit: writing more just fails
#endif
};

}  // namespace

Interruption::Interruption() {
    came = 0;
    for (const auto& [signal, handler] : held) {
        before_.push_back(std::signal(signal, handler));
        if (before_.back() == SIG_IGN) std::signal(signal, SIG_IGN);  // as nohup asks
    }
}

Interruption::~Interruption() {
    restore();
}

bool interruption_asked() {
    return came != 0;
}

void Interruption::obey() {
    restore();
    if (came) std::raise(came);
}

void Interruption::restore() {
    for (std::size_t i = 0; i < before_.size(); ++i)
        std::signal(held[i].signal, before_[i] == SIG_ERR ? SIG_DFL : before_[i]);
}

}  // namespace cephtool
