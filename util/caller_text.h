// The texts that callers of the faces pass in: null counts as empty.
#pragma once

namespace tool {

constexpr const char* or_empty(const char* text) {
    return text ? text : "";
}

}  // namespace tool
