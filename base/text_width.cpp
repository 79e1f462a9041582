#include "base/text_width.h"

#include <algorithm>
#include <iterator>

namespace cephtool {
namespace {

struct Range {
    char32_t first, last;
};

// Characters of East Asian Width W and F (Unicode 14, UAX #11); gaps that hold no character yet are closed.
constexpr Range wide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},
    {0x23F3, 0x23F3},   {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267F, 0x267F},
    {0x2693, 0x2693},   {0x26A1, 0x26A1},   {0x26AA, 0x26AB},   {0x26BD, 0x26BE},   {0x26C4, 0x26C5},
    {0x26CE, 0x26CE},   {0x26D4, 0x26D4},   {0x26EA, 0x26EA},   {0x26F2, 0x26F3},   {0x26F5, 0x26F5},
    {0x26FA, 0x26FA},   {0x26FD, 0x26FD},   {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},
    {0x274C, 0x274C},   {0x274E, 0x274E},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},
    {0x27B0, 0x27B0},   {0x27BF, 0x27BF},   {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},   {0x2B55, 0x2B55},
    {0x2E80, 0x303E},   {0x3041, 0x3247},   {0x3250, 0x4DBF},   {0x4E00, 0xA4C6},   {0xA960, 0xA97C},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE10, 0xFE19},   {0xFE30, 0xFE6B},   {0xFF01, 0xFF60},
    {0xFFE0, 0xFFE6},   {0x16FE0, 0x1B2FB}, {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF}, {0x1F18E, 0x1F18E},
    {0x1F191, 0x1F19A}, {0x1F200, 0x1F320}, {0x1F32D, 0x1F335}, {0x1F337, 0x1F37C}, {0x1F37E, 0x1F393},
    {0x1F3A0, 0x1F3CA}, {0x1F3CF, 0x1F3D3}, {0x1F3E0, 0x1F3F0}, {0x1F3F4, 0x1F3F4}, {0x1F3F8, 0x1F43E},
    {0x1F440, 0x1F440}, {0x1F442, 0x1F4FC}, {0x1F4FF, 0x1F53D}, {0x1F54B, 0x1F54E}, {0x1F550, 0x1F567},
    {0x1F57A, 0x1F57A}, {0x1F595, 0x1F596}, {0x1F5A4, 0x1F5A4}, {0x1F5FB, 0x1F64F}, {0x1F680, 0x1F6C5},
    {0x1F6CC, 0x1F6CC}, {0x1F6D0, 0x1F6D2}, {0x1F6D5, 0x1F6DF}, {0x1F6EB, 0x1F6EC}, {0x1F6F4, 0x1F6FC},
    {0x1F7E0, 0x1F7F0}, {0x1F90C, 0x1F93A}, {0x1F93C, 0x1F945}, {0x1F947, 0x1F9FF}, {0x1FA70, 0x1FAF6},
    {0x20000, 0x3FFFD},
};

// Marks that sit on the character in front of them: combining diacritics, kana voicing marks, joiners, selectors.
constexpr Range invisible[] = {
    {0x0300, 0x036F}, {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x2064}, {0x20D0, 0x20F0},
    {0x302A, 0x302D}, {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF},
};

template <std::size_t count>
bool contains(const Range (&ranges)[count], char32_t character) {
    const Range* range =
        std::partition_point(ranges, ranges + count, [=](const Range& r) { return r.last < character; });
    return range != ranges + count && range->first <= character;
}

int width_of(char32_t character) {
    if (contains(invisible, character)) return 0;
    return contains(wide, character) ? 2 : 1;
}

bool is_control(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

// Marks, embeddings, overrides and isolates that turn the direction of text (UAX #9): a name may pretend to be another.
bool turns_direction(char32_t character) {
    return character == 0x061C || character == 0x200E || character == 0x200F ||
           (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

// "\x1B", "\u202E".
std::string code_of(char32_t character) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string code = character < 0x100 ? "\\x" : "\\u";
    for (int shift = character < 0x100 ? 4 : 12; shift >= 0; shift -= 4) code += digits[character >> shift & 15];
    return code;
}

constexpr char32_t replacement = 0xFFFD;

unsigned byte_at(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

// The character at the start of `text` and its bytes. Overlong forms, surrogates and codes beyond U+10FFFF are
// malformed.
struct Decoded {
    char32_t character = replacement;
    std::size_t bytes = 1;
    bool well_formed = false;
};

Decoded decode(std::string_view text) {
    const unsigned lead = byte_at(text, 0);
    if (lead < 0x80) return {lead, 1, true};
    const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) return {};
    char32_t character = lead & (0x7Fu >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte_at(text, i) & 0xC0) != 0x80) return {};
        character = character << 6 | (byte_at(text, i) & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    if (character < smallest[bytes] || character > 0x10FFFF || surrogate) return {};
    return {character, bytes, true};
}

}  // namespace

char32_t next_character(std::string_view& text) {
    const Decoded decoded = decode(text);
    text.remove_prefix(decoded.bytes);
    return decoded.character;
}

std::size_t first_malformed(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Decoded decoded = decode(text.substr(at));
        if (!decoded.well_formed) return at;
        at += decoded.bytes;
    }
    return std::string_view::npos;
}

int display_width(std::string_view text) {
    int width = 0;
    while (!text.empty()) width += width_of(next_character(text));
    return width;
}

std::string fitted(std::string_view text, int width) {
    if (display_width(text) <= width) return std::string(text);
    if (width < 1) return {};
    std::string_view rest = text;
    int used = 0;
    std::size_t kept = 0;
    while (!rest.empty()) {
        used += width_of(next_character(rest));
        if (used > width - 1) break;
        kept = text.size() - rest.size();
    }
    return std::string(text.substr(0, kept)) + "…";
}

std::string left_aligned(std::string_view text, int width) {
    return std::string(text) + std::string(static_cast<std::size_t>(std::max(0, width - display_width(text))), ' ');
}

std::string right_aligned(std::string_view text, int width) {
    return std::string(static_cast<std::size_t>(std::max(0, width - display_width(text))), ' ') + std::string(text);
}

std::string wrapped(std::string_view text, int width, std::string_view indent) {
    std::string lines;
    int used = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        const int needed = display_width(word);
        if (used > 0 && used + 1 + needed > width) {
            lines += "\n";
            lines += indent;
            used = 0;
        } else if (used > 0) {
            lines += " ";
            ++used;
        }
        lines += word;
        used += needed;
    }
    return lines;
}

std::string printable(std::string_view text) {
    std::string safe;
    while (!text.empty()) {
        const Decoded decoded = decode(text);
        if (!decoded.well_formed) {
            safe += "\xEF\xBF\xBD";
        } else if (is_control(decoded.character) || turns_direction(decoded.character)) {
            safe += code_of(decoded.character);
        } else {
            safe += text.substr(0, decoded.bytes);
        }
        text.remove_prefix(decoded.bytes);
    }
    return safe;
}

std::string in_quotes(std::string_view text) {
    constexpr int readable_columns = 40;
    constexpr std::size_t readable_bytes = 4 * readable_columns;
    return "\"" + fitted(printable(text.substr(0, readable_bytes)), readable_columns) + "\"";
}

std::string shown_name(std::string_view path) {
    constexpr std::size_t most_bytes = 300, kept = 140;
    if (path.size() <= most_bytes) return printable(path);
    std::size_t front = kept, back = path.size() - kept;
    while (front > 0 && (path[front] & 0xC0) == 0x80) --front;
    while (back < path.size() && (path[back] & 0xC0) == 0x80) ++back;
    return printable(path.substr(0, front)) + "…" + printable(path.substr(back));
}

std::string joined(std::span<const std::string> parts, std::string_view between) {
    std::string text;
    for (const std::string& part : parts) {
        if (&part != &parts.front()) text += between;
        text += part;
    }
    return text;
}

bool has_control_character(std::string_view text) {
    while (!text.empty())
        if (is_control(next_character(text))) return true;
    return false;
}

std::string lower_case(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace cephtool
