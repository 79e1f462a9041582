// Numbers of several bytes, wherever they stand.
#pragma once

#include <cstdint>

namespace tool {

// The values are those of CExif::MotorolaOrder.
enum class ByteOrder { intel = 0, motorola = 1 };

// Big-endian whatever the EXIF block says: JPEG's own numbers.
inline std::uint32_t jpeg_u16(const unsigned char* p) {
    return static_cast<std::uint32_t>(p[0] << 8 | p[1]);
}

inline std::uint32_t get_u16(const unsigned char* p, ByteOrder order) {
    return order == ByteOrder::motorola ? jpeg_u16(p) : static_cast<std::uint32_t>(p[1] << 8 | p[0]);
}

inline std::uint32_t get_u32(const unsigned char* p, ByteOrder order) {
    return order == ByteOrder::motorola ? get_u16(p, order) << 16 | get_u16(p + 2, order)
                                        : get_u16(p + 2, order) << 16 | get_u16(p, order);
}

inline std::int32_t get_s32(const unsigned char* p, ByteOrder order) {
    return static_cast<std::int32_t>(get_u32(p, order));
}

}  // namespace tool
