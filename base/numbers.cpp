#include "base/numbers.h"

#include <charconv>
#include <cmath>

#include "base/wording.h"

namespace cephtool {
namespace {

template <class... Format>
std::string formatted(double value, Format... format) {
    char text[400];  // 309 digits of the largest double, a sign, a point and the decimals
    return {text, std::to_chars(text, text + sizeof text, value, format...).ptr};
}

}  // namespace

std::optional<double> number_from(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return {};
    return value;
}

std::string shortest(double value) {
    return formatted(value);
}

std::string readable(double value) {
    return formatted(value, std::chars_format::general, 6);
}

std::string with_decimals(double value, int decimals) {
    if (!(std::abs(value) < 1e7)) return formatted(value, std::chars_format::scientific, 3);
    const std::string text = formatted(value, std::chars_format::fixed, decimals);
    const bool negative_zero = text.starts_with('-') && text.find_first_of("123456789") == std::string::npos;
    return negative_zero ? text.substr(1) : text;
}

}  // namespace cephtool
