// Colours of a terminal.
#pragma once

#include <string>

namespace cephtool {

inline constexpr const char* bold = "\x1b[1m";
inline constexpr const char* green = "\x1b[32m";
inline constexpr const char* amber = "\x1b[33m";
inline constexpr const char* red = "\x1b[31m";

inline std::string painted(const std::string& text, const char* paint, bool colour) {
    constexpr const char* plain = "\x1b[0m";
    return colour ? paint + text + plain : text;
}

}  // namespace cephtool
