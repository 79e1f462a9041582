#pragma once

#include <Exif.h>

#include <span>

#include "exif/byte_order.h"

namespace tool {

// An entry of an EXIF directory. Numbers are read from `value` on even where the entry counts no bytes; `bytes` are
// those it counts.
struct Entry {
    std::uint32_t tag, format;
    unsigned char* value;
    std::size_t byte_count;
    ByteOrder order;

    std::span<unsigned char> bytes() const { return {value, byte_count}; }
};

// Puts the value of a known tag into its field; other tags are passed over.
void store(const Entry& entry, CExif& reader);

}  // namespace tool
