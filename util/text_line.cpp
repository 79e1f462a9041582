#include "util/text_line.h"

#include <algorithm>

namespace tool {

TextLine first_line(const char* buffer, int max) {
    const int limit = std::max(max, 0);
    int length = 0;
    while (length < limit && buffer[length] != '\0' && buffer[length] != '\r') ++length;

    // Kept: a line feed is taken for granted behind a carriage return, and a NUL, or whatever stands at `max`, is
    // skipped like a line end. Callers add `consumed` to their position and compare it with the length they know.
    const bool at_carriage_return = length < limit && buffer[length] == '\r';
    const int skipped = at_carriage_return ? 2 : 1;
    const int longest = 0x7FFFFFFF - skipped;  // only a `max` near the top of the range gets there
    return {{buffer, static_cast<std::size_t>(length)}, std::min(length, longest) + skipped};
}

}  // namespace tool
