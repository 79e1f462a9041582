#pragma once

#include <filesystem>

namespace cephtool {

// The folder of the running program, in the system's own spelling. Throws an Error when the system does not tell.
std::filesystem::path program_folder();

// For a host that is not the program, but has what ships with it: where the program would lie. Before there are threads.
void set_program_folder(const std::filesystem::path& folder);

// Of the analyses, outlines and samples that ship: share/tool beside the program's folder, or beside the folder above
// it where that is the program's own (libexec/cephtool).
std::filesystem::path shared_folder();

}  // namespace cephtool
