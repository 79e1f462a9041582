// Text into a buffer of the caller's.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace tool {

// At most size - 1 bytes and a NUL; nothing into a null buffer or one of size 0. The number of bytes without the NUL.
inline std::size_t copy_cut(std::string_view text, char* buffer, std::size_t size) {
    if (!buffer || size == 0) return 0;
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return length;
}

inline std::string_view view_or_empty(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

}  // namespace tool
