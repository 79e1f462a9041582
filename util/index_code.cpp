#include "util/index_code.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/number_text.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr int max_width = 20;
constexpr int last_letter = 51;  // "z"

double power_of_ten(int exponent) {
    double power = 1;
    for (int i = 0; i < exponent; ++i) power *= 10;
    return exponent < 0 ? 0.1 : power;  // only -1 is ever asked for
}

}  // namespace

std::string index_code(int value, int width) {
    width = std::clamp(width, 0, max_width);
    const auto size = static_cast<std::size_t>(width);
    const std::string digits = print_int(value);
    if (digits.size() <= size) return std::string(size - digits.size(), '0') + digits;

    const std::int32_t letter = truncated((value - power_of_ten(width)) / power_of_ten(width - 1));
    if (letter > last_letter) return ("z" + std::string(max_width, '9')).substr(0, size);

    // Kept: the 26th letter (number 25) is written "`", the character in front of "a", while reading knows "Z" for it.
    // Codes of both kinds are stored.
    const int first = letter < 25 ? 'A' + letter : 'G' + letter;
    return static_cast<char>(first) + digits.substr(std::min<std::size_t>(2, digits.size()));
}

int index_of_code(std::string_view code) {
    if (code.empty()) return 0;
    const char first = code.front();
    int letter = 0;
    if (first >= 'A' && first <= 'Z') {
        letter = first - 'A';
    } else if (first >= 'a' && first <= 'z') {
        letter = first - 'G';
    } else {
        return read_int(code);  // Kept: "`" too, see above
    }
    const int length = static_cast<int>(std::min<std::size_t>(code.size(), max_width));
    const std::int64_t folded = truncated(power_of_ten(length) + letter * power_of_ten(length - 1));
    constexpr std::int64_t lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(folded + read_int(code.substr(1)), lowest, highest));
}

}  // namespace tool
