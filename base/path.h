// Names of files are UTF-8 throughout the program; here they meet the system's own spelling. Off Windows both are the
// same bytes, whatever they are.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace cephtool {

inline std::filesystem::path path_from_utf8(std::string_view name) {
    return std::u8string(name.begin(), name.end());
}

inline std::string utf8_from_path(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

}  // namespace cephtool
