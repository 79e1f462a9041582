// What an entry of an EXIF directory holds: components of one format.
#pragma once

#include "exif/byte_order.h"

namespace tool {

// Codes of the formats, TIFF 6.0 page 15.
enum Format {
    unsigned_byte = 1,
    text = 2,
    unsigned_short = 3,
    unsigned_long = 4,
    unsigned_rational = 5,
    signed_byte = 6,
    undefined = 7,
    signed_short = 8,
    signed_long = 9,
    signed_rational = 10,
    single_float = 11,
    double_float = 12,
};

inline bool is_format(std::uint32_t code) {
    return code >= unsigned_byte && code <= double_float;
}

// Bytes of a component of a format for which is_format() holds.
std::uint32_t component_size(std::uint32_t format);

// The component at `value` as a number; 0 for formats that are none, and for a denominator of 0. As many bytes are read
// as the format's component has.
double converted(const unsigned char* value, std::uint32_t format, ByteOrder order);

}  // namespace tool
