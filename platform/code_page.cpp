#include "platform/code_page.h"

#include <array>
#include <cstddef>
#include <memory>

#include "platform/system.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr char16_t undefined_mark = u'・';  // what the platform shows for a code without a character

// Single bytes outside ASCII and the half-width kana, which the platform reads as characters of their own.
struct SingleByte {
    unsigned char byte;
    char16_t character;
};
constexpr SingleByte odd_bytes[] = {{0x80, 0x0080}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}};

// The platform's nearest code for characters of other scripts. U+2212 (minus) has none, although many tables give it
// one.
struct BestFit {
    char16_t first, last;
    std::uint16_t code;
};
constexpr BestFit best_fits[] = {
    {0x00A1, 0x00A1, '!'},    {0x00A2, 0x00A2, 0x8191}, {0x00A3, 0x00A3, 0x8192}, {0x00A5, 0x00A5, '\\'},
    {0x00A6, 0x00A6, '|'},    {0x00A9, 0x00A9, 'c'},    {0x00AA, 0x00AA, 'a'},    {0x00AB, 0x00AB, 0x81E1},
    {0x00AC, 0x00AC, 0x81CA}, {0x00AD, 0x00AD, '-'},    {0x00AE, 0x00AE, 'R'},    {0x00AF, 0x00AF, 0x8150},
    {0x00B2, 0x00B2, '2'},    {0x00B3, 0x00B3, '3'},    {0x00B5, 0x00B5, 0x83CA}, {0x00B7, 0x00B7, 0x8145},
    {0x00B8, 0x00B8, 0x8143}, {0x00B9, 0x00B9, '1'},    {0x00BA, 0x00BA, 'o'},    {0x00BB, 0x00BB, 0x81E2},
    {0x00C0, 0x00C6, 'A'},    {0x00C7, 0x00C7, 'C'},    {0x00C8, 0x00CB, 'E'},    {0x00CC, 0x00CF, 'I'},
    {0x00D0, 0x00D0, 'D'},    {0x00D1, 0x00D1, 'N'},    {0x00D2, 0x00D6, 'O'},    {0x00D8, 0x00D8, 'O'},
    {0x00D9, 0x00DC, 'U'},    {0x00DD, 0x00DD, 'Y'},    {0x00DE, 0x00DE, 'T'},    {0x00DF, 0x00DF, 's'},
    {0x00E0, 0x00E6, 'a'},    {0x00E7, 0x00E7, 'c'},    {0x00E8, 0x00EB, 'e'},    {0x00EC, 0x00EF, 'i'},
    {0x00F0, 0x00F0, 'd'},    {0x00F1, 0x00F1, 'n'},    {0x00F2, 0x00F6, 'o'},    {0x00F8, 0x00F8, 'o'},
    {0x00F9, 0x00FC, 'u'},    {0x00FD, 0x00FD, 'y'},    {0x00FE, 0x00FE, 't'},    {0x00FF, 0x00FF, 'y'},
    {0x3094, 0x3094, 0x8394},
};

constexpr std::size_t row_of_lead(unsigned lead) {
    return lead < 0xE0 ? lead - 0x81 : lead - 0xE0 + 31;
}
constexpr unsigned lead_of_row(std::size_t row) {
    return static_cast<unsigned>(row < 31 ? row + 0x81 : row - 31 + 0xE0);
}
constexpr std::size_t index_of_trail(unsigned trail) {
    return trail < 0x7F ? trail - 0x40 : trail - 0x41;
}
constexpr unsigned trail_of_index(std::size_t index) {
    return static_cast<unsigned>(index < 63 ? index + 0x40 : index + 0x41);
}

class CodeTable {
 public:
    CodeTable() {
        read_double_byte_table(characters_);
        // Rows F0..F9 are for characters of the user's own, which stand at the start of the private area.
        for (std::size_t i = 0; i < 10 * trail_byte_count; ++i)
            characters_[row_of_lead(0xF0) * trail_byte_count + i] = static_cast<char16_t>(0xE000 + i);

        for (const BestFit& fit : best_fits)
            for (unsigned character = fit.first; character <= fit.last; ++character) codes_[character] = fit.code;
        // A character with several codes goes back to the standard's own, then IBM's, then the copies in rows ED and
        // EE: a code entered later wins.
        enter_rows(0xED, 0xEE);
        enter_rows(0xF0, 0xFC);
        enter_rows(0xE0, 0xEA);
        enter_rows(0x82, 0x9F);
        enter_rows(0x81, 0x81);
        for (unsigned code = 0; code < 0x100; ++code)
            if (const char16_t character = single(code)) codes_[character] = static_cast<std::uint16_t>(code);
    }

    char16_t character(std::uint16_t code) const {
        if (code < 0x100) return single(code);
        const unsigned lead = code >> 8, trail = code & 0xFFu;
        if (!is_lead_byte(static_cast<unsigned char>(lead)) || !is_trail_byte(static_cast<unsigned char>(trail)))
            return 0;
        return characters_[row_of_lead(lead) * trail_byte_count + index_of_trail(trail)];
    }

    std::uint16_t code(char16_t character) const { return codes_[character]; }

 private:
    static char16_t single(unsigned code) {
        if (code < 0x80) return static_cast<char16_t>(code);
        if (code >= 0xA1 && code <= 0xDF) return static_cast<char16_t>(0xFF61 + code - 0xA1);
        for (const SingleByte& odd : odd_bytes)
            if (odd.byte == code) return odd.character;
        return 0;
    }

    void enter_rows(unsigned first_lead, unsigned last_lead) {
        for (std::size_t row = row_of_lead(last_lead) + 1; row-- > row_of_lead(first_lead);)
            for (std::size_t index = trail_byte_count; index-- > 0;)
                if (const char16_t character = characters_[row * trail_byte_count + index])
                    codes_[character] = static_cast<std::uint16_t>(lead_of_row(row) << 8 | trail_of_index(index));
    }

    std::array<char16_t, lead_byte_count * trail_byte_count> characters_{};
    std::array<std::uint16_t, 0x10000> codes_{};
};

const CodeTable& code_table() {
    static const std::unique_ptr<const CodeTable> table = std::make_unique<CodeTable>();
    return *table;
}

bool is_ascii(std::string_view text) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

void append_utf8(std::string& utf8, char16_t character) {
    const unsigned c = character;
    if (c < 0x80) {
        utf8 += static_cast<char>(c);
    } else if (c < 0x800) {
        utf8 += static_cast<char>(0xC0 | c >> 6);
        utf8 += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        utf8 += static_cast<char>(0xE0 | c >> 12);
        utf8 += static_cast<char>(0x80 | (c >> 6 & 0x3F));
        utf8 += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Takes the character that `utf8` begins with off it. Nothing when it is broken, overlong, a surrogate half, or beyond
// the characters of 16 bits, of which code page 932 has none.
std::optional<char16_t> take_utf8(std::string_view& utf8) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(utf8[i])); };
    const unsigned first = byte(0);
    const std::size_t length = first < 0x80                    ? 1
                               : first >= 0xC2 && first < 0xE0 ? 2
                               : first >= 0xE0 && first < 0xF0 ? 3
                                                               : 0;
    if (length == 0 || utf8.size() < length) return std::nullopt;
    unsigned character = length == 1 ? first : first & (length == 2 ? 0x1Fu : 0x0Fu);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return std::nullopt;
        character = character << 6 | (byte(i) & 0x3F);
    }
    if ((length == 3 && character < 0x800) || (character >= 0xD800 && character < 0xE000)) return std::nullopt;
    utf8.remove_prefix(length);
    return static_cast<char16_t>(character);
}

}  // namespace

char16_t character_of_code(std::uint16_t code) {
    return code_table().character(code);
}

std::uint16_t code_of_character(char16_t character) {
    return code_table().code(character);
}

std::string utf8_from_code_page(std::string_view text) {
    if (is_ascii(text)) return std::string(text);
    const CodeTable& table = code_table();
    std::string utf8;
    utf8.reserve(text.size() * 3 / 2);
    while (!text.empty()) {
        const std::size_t length = char_length(text);
        const auto first = static_cast<unsigned char>(text[0]);
        const unsigned code = length == 2 ? first << 8 | static_cast<unsigned char>(text[1]) : first;
        const char16_t character = table.character(static_cast<std::uint16_t>(code));
        append_utf8(utf8, character || code == 0 ? character : undefined_mark);
        text.remove_prefix(length);
    }
    return utf8;
}

std::optional<std::string> code_page_from_utf8(std::string_view utf8) {
    if (is_ascii(utf8)) return std::string(utf8);
    const CodeTable& table = code_table();
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = take_utf8(utf8);
        if (!character) return std::nullopt;
        const std::uint16_t code = table.code(*character);
        if (code == 0 && *character != 0) return std::nullopt;
        if (code > 0xFF) text += static_cast<char>(code >> 8);
        text += static_cast<char>(code);
    }
    return text;
}

}  // namespace tool
