#include "base/remark.h"

namespace cephtool {

std::string filled(std::string_view text, std::span<const std::string> values) {
    std::string whole;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t value = i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '1') : values.size();
        if (text[i] != '%' || value >= values.size()) {
            whole += text[i];
        } else {
            whole += values[value];
            ++i;
        }
    }
    return whole;
}

std::string in_english(const Remark& remark) {
    std::string text = remark.text;
    for (const std::string_view kind : {"%*", "%&"})
        for (std::size_t mark; (mark = text.find(kind)) != std::string::npos;) text.erase(mark + 1, 1);
    return filled(text, remark.values);
}

std::string codes_of(std::span<const Remark> remarks) {
    std::string codes;
    for (const Remark& remark : remarks) codes += (codes.empty() ? "" : "; ") + remark.code;
    return codes;
}

}  // namespace cephtool
