// JPEG files and EXIF blocks byte by byte.
#pragma once

#include <Exif.h>

#include <cstdio>
#include <string>
#include <vector>

namespace exif_test {

enum class Order { intel, motorola };

inline std::string number(Order order, std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8 * (order == Order::intel ? i : size - 1 - i));
    return bytes;
}

inline std::string ratio(Order order, std::int64_t numerator, std::int64_t denominator) {
    return number(order, static_cast<std::uint64_t>(numerator), 4) +
           number(order, static_cast<std::uint64_t>(denominator), 4);
}

inline std::string segment(int marker, const std::string& contents) {
    return "\xFF" + std::string(1, static_cast<char>(marker)) + number(Order::motorola, contents.size() + 2, 2) +
           contents;
}

inline std::string jpeg(const std::string& segments) {
    return "\xFF\xD8" + segments + segment(0xDA, "");
}

struct Tag {
    std::uint32_t tag, format, count;
    std::string value;  // four bytes or fewer stand in the entry, more behind the directory
};

// A directory that begins `start` bytes behind the byte-order mark.
inline std::string directory(Order order, std::size_t start, const std::vector<Tag>& tags, std::uint32_t next = 0) {
    std::string entries = number(order, tags.size(), 2), behind;
    const std::size_t values = start + 2 + 12 * tags.size() + 4;
    for (const Tag& tag : tags) {
        std::string value = tag.value;
        if (value.size() > 4) {
            value = number(order, values + behind.size(), 4);
            behind += tag.value;
        }
        value.resize(4);
        entries += number(order, tag.tag, 2) + number(order, tag.format, 2) + number(order, tag.count, 4) + value;
    }
    return entries + number(order, next, 4) + behind;
}

// A file with one EXIF segment, whose directories are given from offset 8 on.
inline std::string with_exif(Order order, const std::string& directories) {
    return jpeg(segment(0xE1, std::string("Exif\0\0", 6) + (order == Order::intel ? "II" : "MM") +
                                  number(order, 42, 2) + number(order, 8, 4) + directories));
}

inline std::string with_tags(Order order, const std::vector<Tag>& tags) {
    return with_exif(order, directory(order, 8, tags));
}

// Reads `bytes` through a stream and, with another reader, from a block of memory of just that size.
struct Decoded {
    explicit Decoded(const std::string& bytes, tag_ExifInfo* info = nullptr) : reader(info) {
        std::FILE* const stream = std::tmpfile();
        std::fwrite(bytes.data(), 1, bytes.size(), stream);
        std::rewind(stream);
        good = reader.DecodeExif(stream);
        std::fclose(stream);
        const std::vector<unsigned char> block(bytes.begin(), bytes.end());
        same = CExif().DecodeExif(block.data(), block.size()) == good;
    }
    const tag_ExifInfo* operator->() const { return reader.Info; }

    CExif reader;
    bool good, same;
};

}  // namespace exif_test
