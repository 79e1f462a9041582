// Where a file's bytes come from.
#pragma once

#include <cstddef>
#include <cstdio>
#include <cstring>

namespace tool {

class FileSource {
 public:
    explicit FileSource(std::FILE* stream) : stream_(stream) {}
    // The next byte, -1 at the end or when it can't be read.
    int next() { return std::fgetc(stream_); }
    // Whether all of them could be read.
    bool read(unsigned char* to, std::size_t count) { return std::fread(to, 1, count, stream_) == count; }

 private:
    std::FILE* stream_;
};

class MemorySource {
 public:
    MemorySource(const unsigned char* bytes, std::size_t count) : at_(bytes), left_(count) {}
    int next() {
        if (left_ == 0) return -1;
        --left_;
        return *at_++;
    }
    bool read(unsigned char* to, std::size_t count) {
        if (count > left_) return false;
        std::memcpy(to, at_, count);
        at_ += count;
        left_ -= count;
        return true;
    }

 private:
    const unsigned char* at_;
    std::size_t left_;
};

}  // namespace tool
