// The constants and the double-to-integer steps that every measurement and drawing shares. Nothing else in the
// library casts a double to an integer.
#pragma once

#include <cstdint>
#include <limits>

namespace tool {

// Kept: pi cut to nine decimals. Stored measurements and norms were made with it, so a right angle is
// 90.00000001175155 degrees and must stay so.
inline constexpr double short_pi = 3.141592654;
inline constexpr double short_half_pi = 1.570796327;

inline constexpr double degrees_from_radians(double radians) { return radians / short_pi * 180.0; }
inline constexpr double radians_from_degrees(double degrees) { return degrees / 180.0 * short_pi; }

inline constexpr bool fits_32_bits(double value) {
    return value > -2147483649.0 && value < 2147483648.0;
}

// Toward zero. NaN gives 0, a value outside 32 bits the nearest bound.
inline constexpr std::int32_t truncated(double value) {
    if (value != value) return 0;
    if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
    if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

// Kept: half is added, then the rest cut toward zero, also below zero (-2.3 gives -1, -2.7 gives -2), because
// stored image coordinates agree with it to the pixel.
inline constexpr std::int32_t rounded(double value) { return truncated(value + 0.5); }

}  // namespace tool
