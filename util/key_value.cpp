#include "util/key_value.h"

namespace tool {

KeyValue split_at_equals_long(std::string_view line) {
    const std::size_t equals = line.find('=');  // 0x3D is never the second byte of a character
    if (equals == std::string_view::npos) return {line.substr(0, longest_key), {}};
    return {line.substr(0, equals), line.substr(equals + 1)};
}

KeyValue split_at_equals(std::string_view line) {
    const KeyValue parts = split_at_equals_long(line);
    return {parts.key.substr(0, longest_key), parts.value};
}

std::string printed_without_arguments(std::string_view text) {
    std::string printed;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool sign = text[i] == '%';
        if (sign && i + 1 == text.size()) break;
        printed += text[i];
        if (sign && text[i + 1] == '%') ++i;
    }
    return printed;
}

}  // namespace tool
