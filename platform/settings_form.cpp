#include "platform/settings_form.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/code_page.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::string_view little_mark = "\xFF\xFE", big_mark = "\xFE\xFF";
constexpr std::size_t mark_size = 2, unit_size = 2;

bool is_utf16(std::string_view file) {
    return file.starts_with(little_mark) || file.starts_with(big_mark);
}

// Each takes as many bytes in code page 932 as one unit of UTF-16 becomes.
std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> all;
    while (!text.empty()) {
        all.push_back(text.substr(0, char_length(text)));
        text.remove_prefix(all.back().size());
    }
    return all;
}

void append_unit(std::string& file, std::string_view character, bool big_endian) {
    std::uint16_t code = 0;
    for (const char byte : character) code = static_cast<std::uint16_t>(code << 8 | static_cast<unsigned char>(byte));
    char16_t unit = character_of_code(code);
    if (unit == 0 && code != 0) unit = u'・';  // as the platform shows a code without a character
    const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit);
    file += big_endian ? high : low;
    file += big_endian ? low : high;
}

}  // namespace

std::string settings_text(std::string file) {
    if (!is_utf16(file)) return file;
    const std::size_t low = file.starts_with(big_mark) ? 1 : 0;
    std::string text;
    for (std::size_t at = mark_size; at + unit_size <= file.size(); at += unit_size) {
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(file[at + i]); };
        const auto unit = static_cast<char16_t>(byte(1 - low) << 8 | byte(low));
        const std::uint16_t code = code_of_character(unit);
        if (code > 0xFF) text += static_cast<char>(code >> 8);
        text += code == 0 && unit != 0 ? '?' : static_cast<char>(code);
    }
    return text;
}

std::string settings_file_with(std::string_view file, std::string text) {
    if (!is_utf16(file)) return text;
    const std::string old_text = settings_text(std::string(file));
    const std::vector<std::string_view> before = characters(old_text), after = characters(text);
    const auto common = [&](auto from, auto from_end, auto to, auto to_end) {
        return static_cast<std::size_t>(std::mismatch(from, from_end, to, to_end).first - from);
    };
    const std::size_t front = common(before.begin(), before.end(), after.begin(), after.end());
    const std::size_t back = std::min(common(before.rbegin(), before.rend(), after.rbegin(), after.rend()),
                                      std::min(before.size(), after.size()) - front);
    std::string changed(file.substr(0, mark_size + unit_size * front));
    for (std::size_t i = front; i < after.size() - back; ++i)
        append_unit(changed, after[i], file.starts_with(big_mark));
    changed += file.substr(mark_size + unit_size * (before.size() - back));
    return changed;
}

}  // namespace tool
