#pragma once

#include <Exif.h>

namespace tool {

// Whether the section's contents begin as an EXIF segment's do; other segments have the same marker.
bool is_exif(const tag_ExifSection& section);

// Reads a segment for which is_exif() holds into the reader's record. False, with the reason in LastError, when it is
// damaged; fields filled before keep their values.
bool read_exif(const tag_ExifSection& section, CExif& reader);

}  // namespace tool
