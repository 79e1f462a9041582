// Doubles as text and back, as <charconv> has them; standard libraries that lack its functions for doubles (LLVM's up
// to version 19) go through those of <cstdio> and <cstdlib>, which give the same digits in the locale "C".
#pragma once

#include <charconv>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace tool {
namespace by_stdio {

// Decimal and scientific numbers without a sign "+"; no words, no hexadecimal digits.
inline std::from_chars_result from_chars(const char* first, const char* last, double& value) {
    const char* end = first;
    const auto digits = [&] {
        const char* const from = end;
        while (end < last && *end >= '0' && *end <= '9') ++end;
        return end - from;
    };
    if (end < last && *end == '-') ++end;
    auto count = digits();
    if (end < last && *end == '.') ++end, count += digits();
    if (count == 0) return {first, std::errc::invalid_argument};
    if (const char* const mantissa = end; end < last && (*end == 'e' || *end == 'E')) {
        ++end;
        if (end < last && (*end == '+' || *end == '-')) ++end;
        if (digits() == 0) end = mantissa;
    }
    const double number = std::strtod(std::string(first, end).c_str(), nullptr);
    const bool nonzero = std::any_of(first, std::find_if(first, end, [](char c) { return c == 'e' || c == 'E'; }),
                                     [](char c) { return c >= '1' && c <= '9'; });
    if (std::isinf(number) || (number == 0 && nonzero)) return {end, std::errc::result_out_of_range};
    value = number;
    return {end, std::errc()};
}

inline std::to_chars_result to_chars(char* first, char* last, double value, std::chars_format format, int precision) {
    const char* const how = format == std::chars_format::fixed        ? "%.*f"
                            : format == std::chars_format::scientific ? "%.*e"
                                                                      : "%.*g";
    const int length = std::snprintf(nullptr, 0, how, precision, value);
    if (length < 0 || length > last - first) return {last, std::errc::value_too_large};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), how, precision, value);
    return {std::copy_n(text.data(), length, first), std::errc()};
}

// With as few digits as give the number back.
inline std::string shortest_scientific(double value) {
    char text[40];
    int digits = 0;
    do std::snprintf(text, sizeof text, "%.*e", digits, value);
    while (std::strtod(text, nullptr) != value && ++digits < 17);
    return text;
}

inline std::string shortest_fixed(double value) {
    const std::string scientific = shortest_scientific(value);
    const std::size_t e = scientific.find('e'), point = scientific.find('.');
    const int digits = point == std::string::npos ? 0 : static_cast<int>(e - point - 1);
    std::string text(400 + 17, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(
        text.data(), text.size(), "%.*f", std::max(0, digits - std::atoi(scientific.c_str() + e + 1)), value)));
    return text;
}

inline std::to_chars_result copied(const std::string& text, char* first, char* last) {
    if (static_cast<std::ptrdiff_t>(text.size()) > last - first) return {last, std::errc::value_too_large};
    return {std::copy(text.begin(), text.end(), first), std::errc()};
}

// Only std::chars_format::fixed.
inline std::to_chars_result to_chars(char* first, char* last, double value, std::chars_format) {
    return copied(std::isfinite(value) ? shortest_fixed(value) : shortest_scientific(value), first, last);
}

// The shorter of the two forms, the plain one of equals.
inline std::to_chars_result to_chars(char* first, char* last, double value) {
    const std::string scientific = shortest_scientific(value);
    if (!std::isfinite(value)) return copied(scientific, first, last);
    const std::string fixed = shortest_fixed(value);
    return copied(fixed.size() <= scientific.size() ? fixed : scientific, first, last);
}

}  // namespace by_stdio

#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
using std::from_chars;
using std::to_chars;
#else
using by_stdio::from_chars;
using by_stdio::to_chars;
#endif

// All of the text as a finite number; a "+" may lead.
inline std::optional<double> finite_number(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    const auto [end, failure] = from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return {};
    return value;
}

}  // namespace tool
