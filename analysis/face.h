// What the faces of the engine share: C texts and pointers in, no exception out.
#pragma once

#include <cstring>
#include <string_view>

#include "platform/or_failed.h"

namespace tool {

inline std::string_view text_or_empty(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

// Overwrites the first `count` bytes of a text with blanks.
inline void blank(char* text, std::size_t count) {
    if (count > 0) std::memset(text, ' ', count);
}

}  // namespace tool
