// Numbers as text, the same in every locale.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cephtool {

// A decimal number, with nothing around it but blanks. "inf", "nan" and numbers too large for a double are none.
std::optional<double> number_from(std::string_view text);

// As few digits as give the same double when read again.
std::string shortest(double value);
// The same into up to `shortest_room` bytes; gives their end.
char* write_shortest(char* to, double value);
inline constexpr std::size_t shortest_room = 32;

// With six digits at most, for people.
std::string readable(double value);

// With `decimals` digits behind the point, never "-0.0". Values from 10^7 on are written as "1.235e+08".
std::string with_decimals(double value, int decimals);

}  // namespace cephtool
