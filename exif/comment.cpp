#include "exif/comment.h"

#include <algorithm>

namespace tool {
namespace {

// All bytes from 128 on may belong to a text in code page 932.
bool is_shown(unsigned char c) {
    return c >= 32 || c == '\n' || c == '\t';
}

}  // namespace

void read_comment(std::span<const unsigned char> comment, tag_ExifInfo& info) {
    // Kept: the two length bytes count, so that at most 998 characters of the 999 that there is room for are taken.
    const std::size_t end = std::min(comment.size(), sizeof info.Comments);
    char* out = info.Comments;
    for (std::size_t i = 2; i < end; ++i) {
        const unsigned char c = comment[i];
        // Kept: also behind the last byte taken a line feed is looked for.
        if (c == '\r' && i + 1 < comment.size() && comment[i + 1] == '\n') continue;
        *out++ = is_shown(c) ? static_cast<char>(c) : '?';
    }
    *out = '\0';
}

}  // namespace tool
