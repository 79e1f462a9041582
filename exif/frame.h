#pragma once

#include <Exif.h>

namespace tool {

// Size, colour and kind of the picture from its frame header (ITU-T T.81, B.2.2). One too short for them says nothing.
void read_frame(const tag_ExifSection& frame, tag_ExifInfo& info);

}  // namespace tool
