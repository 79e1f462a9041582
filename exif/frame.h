#pragma once

#include <Exif.h>

namespace tool {

// Bytes of a frame header that are read, its two length bytes included.
inline constexpr int frame_bytes_read = 8;

// Size, colour and kind of the picture from its frame header (ITU-T T.81, B.2.2).
void read_frame(const unsigned char* frame, int marker, tag_ExifInfo& info);

}  // namespace tool
