#include "base/numbers.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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
    // Norms, and what is measured in whole pixels: when a whole number divided by 1, 10 or 100 is the value, its digits
    // are the shortest, since no other number of up to 15 digits is that near. All else goes the long way.
    constexpr double largest = 100'000;  // from here on an exponent is shorter
    constexpr int divisors[] = {1, 10, 100};
    for (int decimals = 0; decimals < 3 && std::abs(value) < largest; ++decimals) {
        const double shifted = value * divisors[decimals];
        const int whole = static_cast<int>(shifted + (shifted < 0 ? -0.5 : 0.5));
        if (whole == 0 || static_cast<double>(whole) / divisors[decimals] != value) continue;
        char digits[shortest_room];
        char *const end = std::end(digits), *begin = end;
        for (int rest = std::abs(whole), written = 0; rest > 0 || written <= decimals; rest /= 10, ++written) {
            if (written == decimals && decimals > 0) *--begin = '.';
            *--begin = static_cast<char>('0' + rest % 10);
        }
        if (whole < 0) *--begin = '-';
        return std::copy(begin, end, to);
    }
    return tool::to_chars(to, to + shortest_room, value).ptr;
}

std::string with_decimals(double value, int decimals) {
    if (!(std::abs(value) < 1e7)) return formatted(value, std::chars_format::scientific, 3);
    const std::string text = formatted(value, std::chars_format::fixed, decimals);
    const bool negative_zero = text.starts_with('-') && text.find_first_of("123456789") == std::string::npos;
    return negative_zero ? text.substr(1) : text;
}

}  // namespace cephtool
