#include "platform/number_text.h"

#include <algorithm>
#include <limits>

#include "platform/char_conversion.h"
#include "platform/text.h"

namespace tool {
namespace {

std::size_t digits_from(std::string_view text, std::size_t at) {
    while (at < text.size() && is_digit(text[at])) ++at;
    return at;
}

std::size_t blanks_and_sign(std::string_view text, bool* negative) {
    std::size_t at = 0;
    while (at < text.size() && is_space(text[at])) ++at;
    *negative = at < text.size() && text[at] == '-';
    return at < text.size() && (text[at] == '-' || text[at] == '+') ? at + 1 : at;
}

// Of a number outside the range of doubles: whether it is too large rather than too small.
bool is_large(std::string_view mantissa, std::int64_t exponent) {
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t leading = mantissa.find_first_not_of("0.");
    return exponent + static_cast<std::int64_t>(point) - static_cast<std::int64_t>(leading) > 0;
}

}  // namespace

double read_double(std::string_view text, std::size_t* used) {
    if (used) *used = 0;
    bool negative = false;
    const std::size_t start = blanks_and_sign(text, &negative);
    std::size_t end = digits_from(text, start);
    std::size_t digits = end - start;
    if (end < text.size() && text[end] == '.') {
        const std::size_t point = end;
        end = digits_from(text, point + 1);
        digits += end - point - 1;
    }
    if (digits == 0) return 0;
    const std::string_view mantissa = text.substr(start, end - start);

    std::int64_t exponent = 0;
    if (end < text.size() && (ascii_lower(text[end]) == 'e' || ascii_lower(text[end]) == 'd')) {
        const std::string_view behind = text.substr(end + 1);
        const LeadingInteger read = read_leading_integer(behind);
        if (read.used > 0 && !is_space(behind[0])) {
            exponent = std::clamp<std::int64_t>(read.value, -1'000'000'000, 1'000'000'000);
            end += 1 + read.used;
        }
    }
    if (used) *used = end;

    // A copy brings the exponent into the one form that from_chars knows; plain numbers need none.
    std::string with_exponent;
    std::string_view number = mantissa;
    if (exponent != 0) number = with_exponent = std::string(mantissa) + 'e' + print_int(exponent);
    double value = 0;
    const auto result = from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        value = is_large(mantissa, exponent) ? std::numeric_limits<double>::infinity() : 0;
    return negative ? -value : value;
}

LeadingInteger read_leading_integer(std::string_view text) {
    bool negative = false;
    const std::size_t start = blanks_and_sign(text, &negative);
    const std::size_t end = digits_from(text, start);
    if (end == start) return {};
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    std::int64_t value = 0;  // at or below 0, where there is one number more
    for (const char digit : text.substr(start, end - start)) {
        const int step = digit - '0';
        value = value < (lowest + step) / 10 ? lowest : value * 10 - step;
    }
    if (!negative) value = value == lowest ? std::numeric_limits<std::int64_t>::max() : -value;
    return {value, end};
}

std::int32_t read_int(std::string_view text) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(read_leading_integer(text).value,
                                                              std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

std::string print_fixed(double value, int decimals) {
    decimals = std::max(decimals, 0);
    std::string text(static_cast<std::size_t>(decimals) + 320, '\0');  // the largest double has 309 digits
    const auto result = to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

std::string print_int(std::int64_t value) {
    return std::to_string(value);
}

}  // namespace tool
