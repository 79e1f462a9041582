// A handle that closes itself, and whole reads and writes through it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>

#include "framework/scalars.h"

namespace tool::win32 {

class Handle {
 public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() { close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    bool close() {
        const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
        return handle == INVALID_HANDLE_VALUE || CloseHandle(handle);
    }

 private:
    HANDLE handle_;
};

// The system counts the bytes of one call in 32 bits.
inline constexpr std::size_t largest_transfer = 1u << 30;

inline bool write_all(HANDLE file, const void* data, std::size_t count) {
    const char* next = static_cast<const char*>(data);
    while (count > 0) {
        DWORD written = 0;
        if (!WriteFile(file, next, static_cast<DWORD>(std::min(count, largest_transfer)), &written, nullptr))
            return false;
        next += written;
        count -= written;
    }
    return true;
}

// Fewer bytes than asked for only at the end.
inline bool read_all(HANDLE file, void* buffer, std::size_t count, std::size_t* done) {
    for (*done = 0; *done < count;) {
        DWORD got = 0;
        const DWORD wanted = static_cast<DWORD>(std::min(count - *done, largest_transfer));
        if (!ReadFile(file, static_cast<char*>(buffer) + *done, wanted, &got, nullptr)) return false;
        if (got == 0) break;
        *done += got;
    }
    return true;
}

}  // namespace tool::win32
