#pragma once

#include <Exif.h>

#include <span>

namespace tool {

// Whether the section's contents begin as an EXIF segment's do; other segments have the same marker.
bool is_exif(const tag_ExifSection& section);

// Reads a block, which begins with "Exif", into the reader's record. False, with the reason in LastError, when it is
// damaged; fields filled before keep their values. See
// DirectoryReader for `bytes` and `length`, which count from here.
bool read_exif(std::span<unsigned char> bytes, std::size_t length, CExif& reader);

}  // namespace tool
