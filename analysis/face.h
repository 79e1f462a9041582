// What the faces of the engine share: C texts and pointers in, no exception out.
#pragma once

#include <cstring>
#include <string_view>
#include <utility>

#include "framework/exceptions.h"

namespace tool {

inline std::string_view text_or_empty(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

// Overwrites the first `count` bytes of a text with blanks.
inline void blank(char* text, std::size_t count) {
    if (count > 0) std::memset(text, ' ', count);
}

// What `work` throws becomes `failed`, the value that the caller knows as "no result". The framework's own exceptions
// go on to the host.
template <class Result, class Work>
Result or_failed(Result failed, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (CException*) {
        throw;
    } catch (...) {
        return failed;
    }
}

}  // namespace tool
