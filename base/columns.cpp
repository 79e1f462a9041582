#include "base/columns.h"

#include <algorithm>
#include <iterator>

#include "base/utf8.h"
#include "base/width_tables.h"

namespace cephtool {
namespace {

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

}  // namespace

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

namespace {

// The part of a word up to the next place where it may be broken.
std::string_view unbroken_part(std::string_view word) {
    constexpr std::u32string_view never_first = U"、。，．：；）」』］ー・";
    std::string_view rest = word;
    bool last_is_wide = width_of(next_character(rest)) == 2;
    while (!rest.empty()) {
        std::string_view behind = rest;
        const char32_t next = next_character(behind);
        const bool is_wide = width_of(next) == 2;
        if ((last_is_wide || is_wide) && never_first.find(next) == never_first.npos) break;
        last_is_wide = is_wide;
        rest = behind;
    }
    return word.substr(0, word.size() - rest.size());
}

}  // namespace

std::string wrapped(std::string_view text, int width, std::string_view indent) {
    std::string lines;
    int used = 0;
    const auto break_line = [&] {
        lines += "\n";
        lines += indent;
        used = 0;
    };
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        const int needed = display_width(word);
        const bool in_parts = needed > width;
        std::string_view first = in_parts ? unbroken_part(word) : word;
        if (used > 0 && used + 1 + display_width(first) > width) {
            break_line();
        } else if (used > 0) {
            lines += " ";
            ++used;
        }
        for (std::string_view rest = word; !rest.empty();) {
            const std::string_view part = in_parts ? unbroken_part(rest) : rest;
            const int part_width = display_width(part);
            if (rest.size() < word.size() && used + part_width > width) break_line();
            lines += part;
            used += part_width;
            rest.remove_prefix(part.size());
        }
    }
    return lines;
}

}  // namespace cephtool
