// The delimiter at the end of a path, found by whole characters: the second byte of a double-byte character can equal
// a backslash.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// The path's own delimiter: "/" when there is one behind the first character, else a backslash.
char delimiter_of(std::string_view path);

bool ends_in_delimiter(std::string_view path);

// "" becomes a backslash.
std::string with_delimiter(std::string path);

// One trailing delimiter less. A path of fewer than 4 bytes becomes a drive's root: its first byte, ":" and a
// backslash; "" stays "".
std::string without_delimiter(std::string path);

}  // namespace tool
