// Texts for people: what was found, made safe to show and short enough to read. UTF-8.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cephtool {

// Safe to show: control characters become "\x1B", those that turn the direction of text "\u202E", malformed bytes
// U+FFFD.
std::string printable(std::string_view text);
std::vector<std::string> printable(const std::vector<std::string>& texts);

// printable(), cut to a readable length, in double quotes: what was found, in a message.
std::string in_quotes(std::string_view text);

// printable(), of a name of a file: one that is longer than any that people give is cut in the middle.
std::string shown_name(std::string_view path);

// The parts one after the other, with `between` between them.
std::string joined(std::span<const std::string> parts, std::string_view between);

bool has_control_character(std::string_view text);

// Letters A to Z in lower case, everything else as it is.
std::string lower_case(std::string_view text);

// Without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

}  // namespace cephtool
