#include "exif/comment.h"

#include <algorithm>

namespace tool {
namespace {

// All bytes from 128 on may belong to a text in code page 932.
bool is_shown(unsigned char c) {
    return c >= 32 || c == '\n' || c == '\t';
}

}  // namespace

void read_comment(const tag_ExifSection& comment, tag_ExifInfo& info) {
    // Kept: the two length bytes count, so that at most 998 characters of the 999 that there is room for are taken.
    const int end = std::min<int>(comment.Size, sizeof info.Comments);
    char* out = info.Comments;
    for (int i = 2; i < end; ++i) {
        const unsigned char c = comment.Data[i];
        // Kept: also behind the last byte taken a line feed is looked for. Behind the segment's end stand zeros.
        if (c == '\r' && comment.Data[i + 1] == '\n') continue;
        *out++ = is_shown(c) ? static_cast<char>(c) : '?';
    }
    *out = '\0';
}

}  // namespace tool
