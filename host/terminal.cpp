#include "host/terminal.h"

#include <cstdlib>
#include <string_view>

#if __has_include(<unistd.h>)
#include <unistd.h>
#endif

namespace cephtool {
namespace {

bool output_is_terminal() {
#if __has_include(<unistd.h>)
    return isatty(STDOUT_FILENO) == 1;
#else
    return false;
#endif
}

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

}  // namespace

bool shows_colours() {
    return output_is_terminal() && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
}

}  // namespace cephtool
