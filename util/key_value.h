// Lines of the form "key=value".
#pragma once

#include <string>
#include <string_view>

namespace tool {

// Views into the line that was split.
struct KeyValue {
    std::string_view key, value;
};

inline constexpr std::size_t longest_key = 50;  // bytes

// Splits at the first "="; without one the whole line is the key. A key is cut to 50 bytes.
KeyValue split_at_equals(std::string_view line);

// The same, but only a key without "=" is cut to 50 bytes.
KeyValue split_at_equals_long(std::string_view line);

// The text as a print without arguments would show it, made without a print: "%%" gives "%", a lone "%" at the end
// nothing, and every other conversion stays as it is.
std::string printed_without_arguments(std::string_view text);

}  // namespace tool
