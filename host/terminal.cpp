#include "host/terminal.h"

#include <cstdlib>
#include <string_view>

#if __has_include(<unistd.h>)
#include <unistd.h>
#endif

namespace cephtool {
namespace {

bool is_terminal([[maybe_unused]] int stream) {
#if __has_include(<unistd.h>)
    return isatty(stream) == 1;
#else
    return false;
#endif
}

constexpr int standard_output = 1, standard_error = 2;

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

}  // namespace

bool shows_colours() {
    return is_terminal(standard_output) && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
}

bool shows_progress() {
    return is_terminal(standard_error) && environment("TERM") != "dumb";
}

}  // namespace cephtool
