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

}  // namespace cephtool
