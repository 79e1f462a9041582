// Text in code page 932, where a character is one or two bytes and a trail byte may look like "\", "[" or a letter.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

inline constexpr bool is_lead_byte(unsigned char c) {
    return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
}

inline constexpr bool is_trail_byte(unsigned char c) {
    return c >= 0x40 && c <= 0xFC && c != 0x7F;
}

// White space of the C locale: blank, tab, line feed, vertical tab, form feed, carriage return.
inline constexpr bool is_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

inline constexpr char ascii_lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Bytes of the character that `text` begins with; 0 at its end. A lead byte with nothing behind it counts one; with
// any other byte than NUL behind it, two.
inline constexpr std::size_t char_length(std::string_view text) {
    if (text.empty()) return 0;
    return is_lead_byte(static_cast<unsigned char>(text[0])) && text.size() > 1 && text[1] != '\0' ? 2 : 1;
}

// Position of the first (last) `wanted` that is a character of its own, not a trail byte; npos when there is none.
std::size_t find_char(std::string_view text, char wanted);
std::size_t find_last_char(std::string_view text, char wanted);
// Position of `wanted` where a character of `text` begins; 0 for an empty one.
std::size_t find_text(std::string_view text, std::string_view wanted);

// Letters A to Z are equal to a to z, every other byte only to itself. For keys and keywords.
bool equal_ignoring_case(std::string_view a, std::string_view b);

// The order of the character codes, a double-byte character counting as its two bytes together.
int compare_codes(std::string_view a, std::string_view b);

// Latin letters of one or two bytes, Greek and Cyrillic; every other character stays.
std::string upper(std::string_view text);
std::string lower(std::string_view text);

std::string_view trimmed(std::string_view text);

}  // namespace tool
