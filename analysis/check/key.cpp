#include "analysis/check/key.h"

#include <algorithm>

#include "analysis/key_line.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::string_view wide_colon = "\x81\x46";

bool is_word_char(char c) {
    return is_digit(c) || c == '_' || (ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z');
}

}  // namespace

bool check_for_key(std::string_view line, Findings& findings) {
    const std::size_t narrow = line.find(':'), wide = find_text(line, wide_colon), colon = std::min(narrow, wide);
    if (colon == std::string_view::npos) return false;
    const std::string_view name = trimmed(line.substr(0, colon));
    const std::string_view behind = trimmed(line.substr(colon + (colon == narrow ? 1 : wide_colon.size())));
    const std::string key = std::string(name) + ':';
    if (key_code(key) != content_line) {
        const std::string says = colon == wide    ? "the colon behind the key is a wide one"
                                 : behind.empty() ? "blanks stand round the key"
                                                  : "text stands behind the key";
        findings.fault(line, says + ", so the line is none; write " + quoted(key) +
                                 (behind.empty() ? " alone on the line" : " alone, and the text on the next line"));
    } else if (behind.empty() && !name.empty() && std::ranges::all_of(name, is_word_char)) {
        findings.fault(line, quoted(key) +
                                 " is no key, so what follows belongs to the section above; write one of the "
                                 "keys, such as Calc: or Mean:");
    } else {
        return false;
    }
    return true;
}

}  // namespace tool
