#include "exif/value.h"

#include <bit>

namespace tool {
namespace {

// Kept: also numerators and denominators of unsigned rationals are signed. 0xFFFFFFFF/1, which means "infinite" in a
// subject distance, has always been shown as -1.
double ratio(const unsigned char* p, ByteOrder order) {
    const std::int32_t denominator = get_s32(p + 4, order);
    return denominator == 0 ? 0.0 : static_cast<double>(get_s32(p, order)) / denominator;
}

double wide_float(const unsigned char* p, ByteOrder order) {
    const std::uint64_t first = get_u32(p, order), second = get_u32(p + 4, order);
    return std::bit_cast<double>(order == ByteOrder::motorola ? first << 32 | second : second << 32 | first);
}

}  // namespace

std::uint32_t component_size(std::uint32_t format) {
    constexpr unsigned char sizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
    return sizes[format];
}

double converted(const unsigned char* value, std::uint32_t format, ByteOrder order) {
    switch (format) {
        case unsigned_byte: return value[0];
        case signed_byte: return static_cast<signed char>(value[0]);
        case unsigned_short: return get_u16(value, order);
        case signed_short: return static_cast<std::int16_t>(get_u16(value, order));
        case unsigned_long: return get_u32(value, order);
        case signed_long: return get_s32(value, order);
        case unsigned_rational:
        case signed_rational: return ratio(value, order);
        case single_float: return std::bit_cast<float>(get_u32(value, order));
        case double_float: return wide_float(value, order);
        default: return 0.0;
    }
}

}  // namespace tool
