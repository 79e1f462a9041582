#pragma once

#include <filesystem>

namespace cephtool {

// The folder of the running program, in the system's own spelling. Throws an Error when the system does not tell.
std::filesystem::path program_folder();

// Of the analyses, outlines and samples that ship: share/tool beside the program's folder, or beside the folder above
// it where that is the program's own (libexec/cephtool).
std::filesystem::path shared_folder();

}  // namespace cephtool
