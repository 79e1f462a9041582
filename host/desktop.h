// The desktop that the program runs on; posix/ and win32/ answer.
#pragma once

#include <filesystem>

namespace cephtool {

// A new folder for temporary files that only this person can look into. Throws std::filesystem::filesystem_error.
std::filesystem::path private_temporary_folder();

// False when there is no desktop, or nothing on it that opens pages.
bool open_in_browser(const std::filesystem::path& page);

}  // namespace cephtool
