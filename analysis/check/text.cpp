#include "analysis/check/text.h"

#include <algorithm>
#include <cstdio>

#include "platform/code_page.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr int most_bad_bytes = 20;  // a file with more of them is no text at all

unsigned char byte(char c) {
    return static_cast<unsigned char>(c);
}

// Well-formed UTF-8 with a character of three bytes, as Japanese ones are, is no code page 932 by any likelihood.
bool is_utf8(std::string_view text) {
    bool three_bytes = false;
    for (std::size_t at = 0; at < text.size();) {
        const unsigned char lead = byte(text[at]);
        const std::size_t length = lead < 0x80   ? 1
                                   : lead < 0xC2 ? 0
                                   : lead < 0xE0 ? 2
                                   : lead < 0xF0 ? 3
                                   : lead < 0xF5 ? 4
                                                 : 0;
        if (length == 0 || text.size() - at < length) return false;
        const std::string_view behind = text.substr(at + 1, length - 1);
        if (!std::ranges::all_of(behind, [](char c) { return (byte(c) & 0xC0) == 0x80; })) return false;
        three_bytes |= length >= 3;
        at += length;
    }
    return three_bytes;
}

// What is wrong with the character; nullptr when it is one.
const char* fault_of(std::string_view character) {
    const unsigned char lead = byte(character[0]);
    if (character.size() == 2) {
        const auto code = static_cast<std::uint16_t>(lead << 8 | byte(character[1]));
        return character_of_code(code) ? nullptr : "is no character of code page 932";
    }
    if (is_lead_byte(lead)) return "begins a character of two bytes that has no second one";
    if (lead == 0) return "ends the line here for every reader";
    if (lead < 0x20 || lead == 0x7F) return "is a control character";
    return lead == 0x80 || lead == 0xA0 || lead >= 0xFD ? "is no character of code page 932" : nullptr;
}

}  // namespace

bool check_text(std::string_view text, Findings& findings) {
    const char* encoding = text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ? "UTF-16"
                           : is_utf8(text)                                              ? "UTF-8"
                                                                                        : nullptr;
    if (encoding) {
        findings.fault_of_file(std::string("this is ") + encoding +
                               ", and the program reads code page 932; save the file as Shift_JIS (ANSI, Japanese)");
        return false;
    }
    int bad_bytes = 0;
    for (std::size_t at = 0; at < text.size();) {
        std::string_view character = text.substr(at, char_length(text.substr(at)));
        if (character.size() == 2 && !is_trail_byte(byte(character[1]))) character.remove_suffix(1);
        at += character.size();
        const bool line_end = character == "\n" || (character == "\r" && text.substr(at).starts_with('\n'));
        if (line_end || character == "\t" || (byte(character[0]) >= 0x20 && byte(character[0]) < 0x7F)) continue;
        const char* fault = fault_of(character);
        if (!fault) continue;
        if (++bad_bytes > most_bad_bytes) {
            findings.fault_of_file("this is no text in code page 932; save it as Shift_JIS (ANSI, Japanese)");
            return false;
        }
        char bytes[8];
        std::snprintf(bytes, sizeof bytes, character.size() == 2 ? "%02X %02X" : "%02X", byte(character[0]),
                      byte(character.back()));
        findings.fault(character,
                       "byte " + std::string(bytes) + " " + fault + "; remove it or type the character again");
    }
    return true;
}

}  // namespace tool
