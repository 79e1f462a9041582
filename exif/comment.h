#pragma once

#include <Exif.h>

namespace tool {

// The text of a comment segment (ITU-T T.81, B.2.4.5), made safe to show as lines.
void read_comment(const tag_ExifSection& comment, tag_ExifInfo& info);

}  // namespace tool
