#pragma once

#include <Exif.h>

#include <array>
#include <span>

#include "exif/byte_order.h"

namespace tool {

// An entry of an EXIF directory. Numbers are read from `first` on even where the entry counts no bytes; `bytes` are
// those it counts.
struct Entry {
    std::uint32_t tag, format;
    std::array<unsigned char, 8> first;  // zeros behind the end of the block
    std::span<unsigned char> bytes;
    ByteOrder order;

    double number() const;
    std::int32_t whole() const;  // cut toward zero
};

// Puts the value of a known tag into its field of `info`; other tags are passed over.
void store(const Entry& entry, CExif& reader, tag_ExifInfo& info);

}  // namespace tool
