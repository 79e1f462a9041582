// Settings files that other programs wrote in UTF-16 with a byte order mark, either order, as the platform reads them
// like any other.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// What the file says, in code page 932, "?" for characters that it has no code for; a file without such a mark as it
// is.
std::string settings_text(std::string file);

// The file with `text` in place of its settings_text, in the form that it has: characters that stay keep theirs, also
// those that have no code.
std::string settings_file_with(std::string_view file, std::string text);

}  // namespace tool
