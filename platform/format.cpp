#include "platform/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/char_conversion.h"
#include "platform/text.h"

namespace tool {
namespace {

struct Conversion {
    bool left = false, plus = false, blank = false, alternate = false, zeros = false;
    int width = 0;
    int precision = -1;  // not given
    enum class Size { plain, byte, half, wide } size = Size::plain;
    char letter = '\0';
};

// `va_list` may be an array type, which a reference can only bind to inside a struct.
struct Arguments {
    std::va_list list;
};

// A width or precision so large that no text of it could be held is a mistake, not a wish.
constexpr int longest_field = 1 << 20;

int field(std::string_view& rest, Arguments& arguments) {
    if (rest.starts_with('*')) {
        rest.remove_prefix(1);
        return std::clamp(va_arg(arguments.list, int), -longest_field, longest_field);
    }
    int number = 0;
    for (; !rest.empty() && is_digit(rest[0]); rest.remove_prefix(1))
        number = std::min(number * 10 + (rest[0] - '0'), longest_field);
    return number;
}

bool take(std::string_view& rest, std::string_view prefix) {
    if (!rest.starts_with(prefix)) return false;
    rest.remove_prefix(prefix.size());
    return true;
}

Conversion::Size take_size(std::string_view& rest) {
    using Size = Conversion::Size;
    constexpr struct {
        std::string_view text;
        Size size;
    } sizes[] = {
        {"hh", Size::byte},   {"h", Size::half}, {"ll", Size::wide}, {"l", Size::plain}, {"I64", Size::wide},
        {"I32", Size::plain}, {"I", Size::wide}, {"z", Size::wide},  {"L", Size::plain}, {"w", Size::plain},
    };
    for (const auto& size : sizes)
        if (take(rest, size.text)) return size.size;
    return Size::plain;
}

// What stands behind "%"; the letter is NUL when the format ends before it.
Conversion take_conversion(std::string_view& rest, Arguments& arguments) {
    Conversion conversion;
    for (; !rest.empty(); rest.remove_prefix(1)) {
        switch (rest[0]) {
            case '-': conversion.left = true; continue;
            case '+': conversion.plus = true; continue;
            case ' ': conversion.blank = true; continue;
            case '#': conversion.alternate = true; continue;
            case '0': conversion.zeros = true; continue;
            default: break;
        }
        break;
    }
    conversion.width = field(rest, arguments);
    if (conversion.width < 0) {
        conversion.left = true;
        conversion.width = -conversion.width;
    }
    if (take(rest, ".")) conversion.precision = field(rest, arguments);
    conversion.size = take_size(rest);
    if (!rest.empty()) {
        conversion.letter = rest[0];
        rest.remove_prefix(1);
    }
    return conversion;
}

// Brings a converted value to its width; zeros go between the prefix (sign, "0x") and the digits.
void append_padded(std::string& text, const Conversion& conversion, std::string_view prefix, std::string_view body,
                   bool zeros) {
    const std::size_t length = prefix.size() + body.size();
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t padding = width > length ? width - length : 0;
    if (!conversion.left && !zeros) text.append(padding, ' ');
    text.append(prefix);
    if (!conversion.left && zeros) text.append(padding, '0');
    text.append(body);
    if (conversion.left) text.append(padding, ' ');
}

std::string_view sign_of(const Conversion& conversion, bool negative) {
    if (negative) return "-";
    return conversion.plus ? "+" : conversion.blank ? " " : "";
}

void append_integer(std::string& text, const Conversion& conversion, std::uint64_t magnitude, std::string_view prefix,
                    int base) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, magnitude, base).ptr;
    std::string body(digits, end);
    if (conversion.letter == 'X') body = upper(body);
    if (magnitude == 0 && conversion.precision == 0) body.clear();
    if (conversion.precision > static_cast<int>(body.size()))
        body.insert(0, static_cast<std::size_t>(conversion.precision) - body.size(), '0');
    append_padded(text, conversion, prefix, body, conversion.zeros && conversion.precision < 0);
}

void append_signed(std::string& text, const Conversion& conversion, Arguments& arguments) {
    std::int64_t value;
    switch (conversion.size) {
        case Conversion::Size::wide: value = va_arg(arguments.list, std::int64_t); break;
        case Conversion::Size::half: value = static_cast<std::int16_t>(va_arg(arguments.list, int)); break;
        case Conversion::Size::byte: value = static_cast<std::int8_t>(va_arg(arguments.list, int)); break;
        default: value = va_arg(arguments.list, int); break;
    }
    const auto bits = static_cast<std::uint64_t>(value);
    append_integer(text, conversion, value < 0 ? 0 - bits : bits, sign_of(conversion, value < 0), 10);
}

void append_unsigned(std::string& text, const Conversion& conversion, Arguments& arguments) {
    std::uint64_t value;
    switch (conversion.size) {
        case Conversion::Size::wide: value = va_arg(arguments.list, std::uint64_t); break;
        case Conversion::Size::half: value = static_cast<std::uint16_t>(va_arg(arguments.list, unsigned)); break;
        case Conversion::Size::byte: value = static_cast<std::uint8_t>(va_arg(arguments.list, unsigned)); break;
        default: value = va_arg(arguments.list, unsigned); break;
    }
    std::string_view prefix;
    if (conversion.alternate && value != 0)
        prefix = conversion.letter == 'x'   ? "0x"
                 : conversion.letter == 'X' ? "0X"
                 : conversion.letter == 'o' ? "0"
                                            : "";
    append_integer(text, conversion, value, prefix, conversion.letter == 'u' ? 10 : conversion.letter == 'o' ? 8 : 16);
}

std::string digits_of(double magnitude, std::chars_format form, int precision) {
    std::string digits(static_cast<std::size_t>(precision) + 330, '\0');
    const auto end = to_chars(digits.data(), digits.data() + digits.size(), magnitude, form, precision).ptr;
    digits.resize(static_cast<std::size_t>(end - digits.data()));
    return digits;
}

// "%g": the shorter of the two forms by the exponent that the rounded value has, without trailing zeros unless asked.
std::string general_digits(double magnitude, int precision, bool keep_zeros) {
    precision = std::max(precision, 1);
    std::string digits = digits_of(magnitude, std::chars_format::scientific, precision - 1);
    std::size_t exponent_at = digits.find('e');
    int exponent = 0;
    std::from_chars(digits.data() + exponent_at + (digits[exponent_at + 1] == '+' ? 2 : 1),
                    digits.data() + digits.size(), exponent);
    if (exponent >= -4 && exponent < precision) {
        digits = digits_of(magnitude, std::chars_format::fixed, precision - 1 - exponent);
        exponent_at = digits.size();
    }
    std::string mantissa = digits.substr(0, exponent_at);
    if (!keep_zeros && mantissa.find('.') != std::string::npos) {
        mantissa.resize(mantissa.find_last_not_of('0') + 1);
        if (mantissa.back() == '.') mantissa.pop_back();
    }
    return mantissa + digits.substr(exponent_at);
}

void append_double(std::string& text, const Conversion& conversion, double value) {
    const bool negative = std::signbit(value);
    const double magnitude = std::fabs(value);
    const int precision = conversion.precision < 0 ? 6 : conversion.precision;
    const bool finite = std::isfinite(value);
    const char form = ascii_lower(conversion.letter);
    std::string body;
    if (!finite) {
        body = std::isnan(value) ? "nan" : "inf";
    } else if (form == 'g') {
        body = general_digits(magnitude, precision, conversion.alternate);
    } else {
        body = digits_of(magnitude, form == 'f' ? std::chars_format::fixed : std::chars_format::scientific, precision);
    }
    if (finite && conversion.alternate && body.find('.') == std::string::npos)
        body.insert(std::min(body.find('e'), body.size()), 1, '.');
    if (form != conversion.letter) body = upper(body);
    append_padded(text, conversion, sign_of(conversion, negative), body, conversion.zeros && finite);
}

void append_text(std::string& text, const Conversion& conversion, const char* value) {
    if (value == nullptr) value = "(null)";
    const std::size_t length =
        conversion.precision < 0 ? std::strlen(value) : strnlen(value, static_cast<std::size_t>(conversion.precision));
    append_padded(text, conversion, "", {value, length}, conversion.zeros);
}

void append_converted(std::string& text, const Conversion& conversion, Arguments& arguments) {
    switch (conversion.letter) {
        case '\0': return;
        case 'd':
        case 'i': return append_signed(text, conversion, arguments);
        case 'u':
        case 'o':
        case 'x':
        case 'X': return append_unsigned(text, conversion, arguments);
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G': return append_double(text, conversion, va_arg(arguments.list, double));
        case 's': return append_text(text, conversion, va_arg(arguments.list, const char*));
        case 'c': {
            const char letter = static_cast<char>(va_arg(arguments.list, int));
            return append_padded(text, conversion, "", {&letter, 1}, false);
        }
        case 'p': {
            Conversion pointer = conversion;
            pointer.letter = 'X';
            pointer.precision = 2 * sizeof(void*);
            return append_integer(text, pointer, reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, void*)), "",
                                  16);
        }
        case 'n': static_cast<void>(va_arg(arguments.list, void*)); return;
        default: text += conversion.letter;
    }
}

}  // namespace

std::string formatted(const char* format, std::va_list list) {
    Arguments arguments;
    va_copy(arguments.list, list);
    std::string text;
    std::string_view rest = format;
    while (!rest.empty()) {
        const std::size_t percent = find_char(rest, '%');
        text += rest.substr(0, percent);
        if (percent == std::string_view::npos) break;
        rest.remove_prefix(percent + 1);
        append_converted(text, take_conversion(rest, arguments), arguments);
    }
    va_end(arguments.list);
    return text;
}

}  // namespace tool
