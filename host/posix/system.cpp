#include "host/system.h"

#include <unistd.h>

namespace cephtool {

void prepare_standard_streams() {}

bool is_terminal(StandardStream stream) {
    return isatty(static_cast<int>(stream)) == 1;
}

std::FILE* opened_to_read(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "rb");
}

}  // namespace cephtool
