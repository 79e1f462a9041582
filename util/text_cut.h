// Cutting and escaping of short texts, byte by byte.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// At most `count` bytes from byte `start`; "" for a start outside the text and for negative arguments.
std::string_view cut(std::string_view text, int start, int count);

// Only 0x20 is a blank here; it is never the second byte of a character.
std::string_view without_trailing_blanks(std::string_view text);

// Every "&" doubled: a label shows a single one as an underline.
std::string with_doubled_ampersands(std::string_view text);

}  // namespace tool
