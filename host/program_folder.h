#pragma once

#include <filesystem>

namespace cephtool {

// The folder of the running program, in the system's own spelling.
std::filesystem::path program_folder();

}  // namespace cephtool
