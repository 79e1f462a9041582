// Numbers as text: "." in every locale and the same digits on every system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// The number that `text` begins with, behind white space: sign, digits, point, exponent (e, E, d or D), nothing else.
// Kept: "d" as an exponent letter and no hexadecimal, "inf" or "nan", because the run-time library of the stored files
// read them so.
// Correctly rounded; too large is an infinity, too small 0. Without a number 0. *used: the bytes read, 0 for no number.
double read_double(std::string_view text, std::size_t* used = nullptr);

// The integer that `text` begins with, behind white space and a sign, kept within 32 bits; 0 without one.
std::int32_t read_int(std::string_view text);

// The same without a bound, for callers with limits of their own: the value saturates at 64 bits.
struct LeadingInteger {
    std::int64_t value = 0;
    std::size_t used = 0;  // bytes, white space and sign included; 0 for no number
};
LeadingInteger read_leading_integer(std::string_view text);

// "%.Nf": the exact binary value rounded to `decimals`, ties to even.
std::string print_fixed(double value, int decimals);

std::string print_int(std::int64_t value);

}  // namespace tool
