#include "util/text_cut.h"

namespace tool {

std::string_view cut(std::string_view text, int start, int count) {
    const auto first = static_cast<std::size_t>(start);  // a negative one lies far behind any text
    if (count < 0 || first >= text.size()) return {};
    return text.substr(first, static_cast<std::size_t>(count));
}

std::string_view without_trailing_blanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);  // npos + 1 is 0
}

std::string with_doubled_ampersands(std::string_view text) {
    std::string doubled;
    for (const char c : text) doubled.append(c == '&' ? 2u : 1u, c);
    return doubled;
}

}  // namespace tool
