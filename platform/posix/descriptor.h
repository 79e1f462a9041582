// A file descriptor that closes itself.
#pragma once

#include <cerrno>
#include <cstddef>

#include <unistd.h>

namespace tool::posix {

class Descriptor {
 public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool is_open() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }
    bool close() {
        const int descriptor = descriptor_;
        descriptor_ = -1;
        return descriptor < 0 || ::close(descriptor) == 0;
    }

 private:
    int descriptor_;
};

// All of it, however many calls that takes; false with errno.
inline bool write_all(int descriptor, const void* data, std::size_t count) {
    const char* next = static_cast<const char*>(data);
    while (count > 0) {
        const ssize_t written = ::write(descriptor, next, count);
        if (written < 0 && errno != EINTR) return false;
        if (written <= 0) continue;
        next += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

// Up to `count` bytes, fewer only at the end; -1 with errno.
inline ssize_t read_all(int descriptor, void* buffer, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = ::read(descriptor, static_cast<char*>(buffer) + done, count - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -1;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(done);
}

}  // namespace tool::posix
