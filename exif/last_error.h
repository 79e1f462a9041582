#pragma once

#include <Exif.h>

#include <cstring>

namespace tool {

// Leaves `text` in the reader.
template <std::size_t size>
void set_last_error(CExif& reader, const char (&text)[size]) {
    static_assert(size <= sizeof reader.LastError);
    std::memcpy(reader.LastError, text, size);
}

// The same; false, for a step that fails with it.
template <std::size_t size>
bool failed(CExif& reader, const char (&text)[size]) {
    set_last_error(reader, text);
    return false;
}

}  // namespace tool
