#pragma once

#include <Exif.h>

#include <span>

namespace tool {

// The text of a comment segment (ITU-T T.81, B.2.4.5), which begins with its two length bytes, made safe to show as
// lines.
void read_comment(std::span<const unsigned char> comment, tag_ExifInfo& info);

}  // namespace tool
