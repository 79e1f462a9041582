#include "host/terminal.h"

#include <cstdlib>
#include <string_view>

#include "base/system.h"

namespace cephtool {
namespace {

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

}  // namespace

bool shows_colours() {
    return is_terminal(StandardStream::output) && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
}

bool shows_progress() {
    return is_terminal(StandardStream::error) && environment("TERM") != "dumb";
}

}  // namespace cephtool
