#include "util/decimal_text.h"

#include <cmath>
#include <cstdint>

#include "platform/number_text.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr int max_places = 6;

// Up to here every integer is a double of its own, and every decimal with six places among its digits comes back
// from the nearest double.
constexpr std::size_t exact_digits = 15;

}  // namespace

std::string fixed_text(double value, int decimals) {
    const double magnitude = std::fabs(value);
    const std::int32_t whole = truncated(magnitude);

    // Kept: a fraction that rounds up to "1.000000" does not carry into the whole part, so 2.9999999 becomes "2.".
    // Stored texts were made this way.
    std::string fraction = print_fixed(magnitude - whole, max_places);
    const std::int64_t shortest = std::int64_t{decimals} + 2;
    while (fraction.back() == '0' && static_cast<std::int64_t>(fraction.size()) > shortest) fraction.pop_back();

    std::string text = (value < 0 ? "-" : "") + print_int(whole);
    const std::size_t point = fraction.find('.');
    if (point != std::string::npos) text.append(fraction, point);
    return text;
}

bool is_number(std::string_view text) {
    while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
    if (text.empty()) return true;

    // Only a text of the shape -?(0|[1-9]\d*)(\.\d{0,6})? can be the beginning of a number printed with six places.
    std::string_view rest = text;
    const auto skip_digits = [&rest] {
        std::size_t n = 0;
        while (n < rest.size() && is_digit(rest[n])) ++n;
        rest.remove_prefix(n);
        return n;
    };
    if (rest.front() == '-') rest.remove_prefix(1);
    const bool leading_zero = rest.starts_with('0');
    const std::size_t whole = skip_digits();
    const bool point = rest.starts_with('.');
    if (point) rest.remove_prefix(1);
    const std::size_t places = point ? skip_digits() : 0;
    if (whole == 0 || (leading_zero && whole > 1) || places > max_places || !rest.empty()) return false;

    const std::size_t digits_at_stake = point ? whole + max_places : whole;
    return digits_at_stake <= exact_digits || print_fixed(read_double(text), max_places).starts_with(text);
}

}  // namespace tool
