// Names of files and landmarks for the library, which has them in code page 932.
#pragma once

#include <Framework.h>

#include <filesystem>
#include <optional>
#include <string>

namespace cephtool {

// Nothing when a character has no place in the code page. What only resembles the name ("u" for "ü") is another one.
std::optional<CString> library_name(const std::string& utf8);

// A path that the library gives, in the system's own spelling.
std::filesystem::path path_from_library(const char* path);

}  // namespace cephtool
