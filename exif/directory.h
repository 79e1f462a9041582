// The directories of an EXIF block: entries of twelve bytes, links to further directories.
#pragma once

#include <Exif.h>

#include <bitset>

#include "exif/byte_order.h"
#include "exif/tag_fields.h"

namespace tool {

class DirectoryReader {
 public:
    // `base` is the byte-order mark, from which offsets count. At least six bytes behind `base + length` are there:
    // the last entry's value is read as eight bytes, and a directory may begin at the very end.
    DirectoryReader(CExif& reader, unsigned char* base, std::uint32_t length)
        : reader_(reader), base_(base), length_(length), order_(static_cast<ByteOrder>(reader.MotorolaOrder)) {}

    // Reads the directory at `start`, at most `length`, and those it links to. False, with the reason in LastError,
    // when it is damaged; damage in those it links to does not count. A directory that was read before and one below
    // 64 open ones are passed over, so that circles end.
    bool read(std::uint64_t start);

 private:
    // Where a thumbnail lies, as one directory tells it.
    struct Thumbnail {
        std::int32_t offset = 0, size = 0;
    };

    bool read_entries(std::uint64_t start);
    bool read_entry(std::uint64_t at, Thumbnail& thumbnail);
    bool follow(std::uint64_t start);
    void keep(const Thumbnail& thumbnail);

    CExif& reader_;
    unsigned char* base_;
    std::uint64_t length_;
    ByteOrder order_;
    int open_ = 0;
    std::bitset<0x10000> seen_;  // by start: no segment is longer
};

}  // namespace tool
