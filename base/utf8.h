// UTF-8, a character at a time.
#pragma once

#include <cstddef>
#include <string_view>

namespace cephtool {

struct Utf8Character {
    char32_t code = 0xFFFD;
    std::size_t bytes = 1;
    bool well_formed = false;
};

// The one at the start of `text`, which must not be empty. A malformed byte (overlong forms, surrogates and codes
// beyond U+10FFFF are malformed) gives U+FFFD and itself alone.
Utf8Character first_character(std::string_view text);

// Takes it off `text`.
char32_t next_character(std::string_view& text);

// Offset of the first byte that is not UTF-8, npos when all are.
std::size_t first_malformed(std::string_view text);

}  // namespace cephtool
