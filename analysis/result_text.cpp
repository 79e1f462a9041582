#include "analysis/result_text.h"

#include <algorithm>
#include <cmath>

#include "platform/char_conversion.h"
#include "platform/number_text.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr int most_decimals = 2;

std::string formatted(double value, auto... format) {
    char text[400];  // 309 digits of the largest double, a sign, a point and the decimals
    return {text, to_chars(text, text + sizeof text, value, format...).ptr};
}

// Of the shortest text that reads back as the same number.
int decimals_of(double value) {
    const std::string text = formatted(value, std::chars_format::fixed);
    const std::size_t point = text.find('.');
    return point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1);
}

bool shows_zero(const std::string& text) {
    return text.find_first_of("123456789") == std::string::npos;
}

}  // namespace

int item_decimals(bool has_unit, std::optional<double> mean, std::optional<double> sd) {
    int needed = has_unit ? 1 : most_decimals;
    for (const std::optional<double>& norm : {mean, sd})
        if (norm) needed = std::max(needed, decimals_of(*norm));
    return std::min(needed, most_decimals);
}

std::string number_text(double value, int decimals) {
    if (!(std::abs(value) < 1e7)) return formatted(value, std::chars_format::scientific, 3);
    const std::string text = print_fixed(value, decimals);
    return text.starts_with('-') && shows_zero(text) ? text.substr(1) : text;
}

std::string deviation_text(double deviation) {
    const std::string text = number_text(deviation, 2);
    return deviation > 0 && !shows_zero(text) ? "+" + text : text;
}

std::string deviation_stars(double deviation) {
    constexpr int most = 5;
    const int whole = truncated(std::abs(deviation));
    return std::string(static_cast<std::size_t>(std::min(whole, most)), '*') + (whole > most ? "+" : "");
}

}  // namespace tool
