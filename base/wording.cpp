#include "base/wording.h"

#include <algorithm>

#include "base/columns.h"
#include "base/utf8.h"

namespace cephtool {
namespace {

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

}  // namespace

std::string printable(std::string_view text) {
    const auto is_plain = [](char c) { return c >= ' ' && c <= '~'; };
    if (std::ranges::all_of(text, is_plain)) return std::string(text);
    std::string safe;
    while (!text.empty()) {
        const Utf8Character first = first_character(text);
        if (!first.well_formed) {
            safe += "\xEF\xBF\xBD";
        } else if (is_control(first.code) || turns_direction(first.code)) {
            safe += code_of(first.code);
        } else {
            safe += text.substr(0, first.bytes);
        }
        text.remove_prefix(first.bytes);
    }
    return safe;
}

std::vector<std::string> printable(const std::vector<std::string>& texts) {
    std::vector<std::string> safe;
    for (const std::string& text : texts) safe.push_back(printable(text));
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
