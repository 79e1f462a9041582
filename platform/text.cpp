#include "platform/text.h"

#include <cstdint>

namespace tool {
namespace {

// A character's code: one byte, or lead byte * 256 + trail byte.
using Code = std::uint16_t;

Code code_of(std::string_view character) {
    const auto first = static_cast<unsigned char>(character[0]);
    if (character.size() < 2) return first;
    return static_cast<Code>(first << 8 | static_cast<unsigned char>(character[1]));
}

void append(std::string& text, Code code) {
    if (code > 0xFF) text += static_cast<char>(code >> 8);
    text += static_cast<char>(code);
}

// A run of capitals and where their small letters begin. Cyrillic is cut in two: no trail byte is 7F.
struct LetterRun {
    Code first_capital, last_capital, first_small;
};
constexpr LetterRun letter_runs[] = {
    {'A', 'Z', 'a'},          {0x8260, 0x8279, 0x8281},  // Latin, one and two bytes
    {0x839F, 0x83B6, 0x83BF},                            // Greek
    {0x8440, 0x844E, 0x8470}, {0x844F, 0x8460, 0x8480},  // Cyrillic
};

Code small(Code code) {
    for (const LetterRun& run : letter_runs)
        if (code >= run.first_capital && code <= run.last_capital)
            return static_cast<Code>(code - run.first_capital + run.first_small);
    return code;
}

Code capital(Code code) {
    for (const LetterRun& run : letter_runs)
        if (code >= run.first_small && code - run.first_small <= run.last_capital - run.first_capital)
            return static_cast<Code>(code - run.first_small + run.first_capital);
    return code;
}

std::string mapped(std::string_view text, Code (*map)(Code)) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = char_length(text);
        append(result, map(code_of(text.substr(0, length))));
        text.remove_prefix(length);
    }
    return result;
}

int sign(auto a, auto b) {
    return (a > b) - (a < b);
}

}  // namespace

std::size_t find_char(std::string_view text, char wanted) {
    for (std::size_t at = 0; at < text.size(); at += char_length(text.substr(at)))
        if (text[at] == wanted) return at;
    return std::string_view::npos;
}

std::size_t find_last_char(std::string_view text, char wanted) {
    std::size_t found = std::string_view::npos;
    for (std::size_t at = 0; at < text.size(); at += char_length(text.substr(at)))
        if (text[at] == wanted) found = at;
    return found;
}

std::size_t find_text(std::string_view text, std::string_view wanted) {
    if (wanted.empty()) return 0;
    for (std::size_t at = 0; at < text.size(); at += char_length(text.substr(at)))
        if (text.substr(at).starts_with(wanted)) return at;
    return std::string_view::npos;
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    bool trail = false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && (trail || ascii_lower(a[i]) != ascii_lower(b[i]))) return false;
        trail = !trail && is_lead_byte(static_cast<unsigned char>(a[i]));
    }
    return true;
}

int compare_codes(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        const std::size_t length_a = char_length(a), length_b = char_length(b);
        if (const int order = sign(code_of(a.substr(0, length_a)), code_of(b.substr(0, length_b)))) return order;
        a.remove_prefix(length_a);
        b.remove_prefix(length_b);
    }
    return sign(a.size(), b.size());
}

std::string upper(std::string_view text) {
    return mapped(text, capital);
}

std::string lower(std::string_view text) {
    return mapped(text, small);
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
    while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
    return text;
}

}  // namespace tool
