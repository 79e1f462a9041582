#include "host/system.h"

#include <unistd.h>

namespace cephtool {

void prepare_standard_streams() {}

bool is_terminal(StandardStream stream) {
    return isatty(static_cast<int>(stream)) == 1;
}

std::filesystem::path running_program() {
    std::error_code failure;
    return std::filesystem::read_symlink("/proc/self/exe", failure);
}

std::FILE* opened_to_read(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "rb");
}

}  // namespace cephtool
