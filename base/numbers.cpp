#include "base/numbers.h"

#include <charconv>
#include <cmath>

#include "base/wording.h"
#include "platform/char_conversion.h"

namespace cephtool {
namespace {

template <class... Format>
std::string formatted(double value, Format... format) {
    char text[400];  // 309 digits of the largest double, a sign, a point and the decimals
    return {text, tool::to_chars(text, text + sizeof text, value, format...).ptr};
}

}  // namespace

std::optional<double> number_from(std::string_view text) {
    return tool::finite_number(trimmed(text));
}

std::string shortest(double value) {
    return formatted(value);
}

std::string readable(double value) {
    return formatted(value, std::chars_format::general, 6);
}

char* write_shortest(char* to, double value) {
    // Norms, and what is measured in whole pixels: when a whole number of hundredths is the value, its digits are the
    // shortest, since no other number of up to 15 digits is that near. All else goes the long way.
    constexpr double largest = 100'000;  // from here on an exponent is shorter
    constexpr double nearly_whole = 1e-3;
    const double shifted = std::abs(value) < largest ? std::abs(value) * 100 : 0.5;
    const int hundredths = static_cast<int>(shifted + 0.5);
    if (hundredths == 0 || std::abs(shifted - hundredths) > nearly_whole || hundredths / 100.0 != std::abs(value))
        return tool::to_chars(to, to + shortest_room, value).ptr;
    if (value < 0) *to++ = '-';
    to = std::to_chars(to, to + shortest_room, hundredths / 100).ptr;
    if (hundredths % 100 == 0) return to;
    *to++ = '.';
    *to++ = static_cast<char>('0' + hundredths / 10 % 10);
    if (hundredths % 10 != 0) *to++ = static_cast<char>('0' + hundredths % 10);
    return to;
}

std::string with_decimals(double value, int decimals) {
    if (!(std::abs(value) < 1e7)) return formatted(value, std::chars_format::scientific, 3);
    const std::string text = formatted(value, std::chars_format::fixed, decimals);
    const bool negative_zero = text.starts_with('-') && text.find_first_of("123456789") == std::string::npos;
    return negative_zero ? text.substr(1) : text;
}

}  // namespace cephtool
