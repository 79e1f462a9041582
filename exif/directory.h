// The directories of an EXIF block: entries of twelve bytes, links to further directories.
#pragma once

#include <Exif.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <span>

#include "exif/byte_order.h"
#include "exif/tag_fields.h"

namespace tool {

class DirectoryReader {
 public:
    // `bytes` are those that are there from the byte-order mark on, from which offsets count; behind them stand zeros,
    // as it were. The first `length` of them, at most 65,535, may belong to directories and what these point to.
    DirectoryReader(CExif& reader, tag_ExifInfo& info, std::span<unsigned char> bytes, std::size_t length)
        : reader_(reader),
          info_(info),
          bytes_(bytes),
          length_(std::min({length, bytes.size(), std::size_t{0xFFFF}})),
          order_(static_cast<ByteOrder>(reader.MotorolaOrder)) {}

    // Reads the directory at `start` and those it links to. False, with the reason in LastError, when it is damaged;
    // damage in those it links to does not count. A directory that was read before and one below 64 open ones are
    // passed over, so that circles end.
    bool read(std::size_t start);

    // Behind the last byte of any entry's value so far; null when there was none.
    unsigned char* last_referenced() const { return last_referenced_; }

 private:
    // Where a thumbnail lies, as one directory tells it.
    struct Thumbnail {
        std::int32_t offset = 0, size = 0;
    };

    std::array<unsigned char, 8> eight_bytes(std::size_t at) const;
    std::uint32_t u16(std::size_t at) const { return get_u16(eight_bytes(at).data(), order_); }
    std::uint32_t u32(std::size_t at) const { return get_u32(eight_bytes(at).data(), order_); }
    bool read_entries(std::size_t start);
    bool read_entry(std::size_t at, Thumbnail& thumbnail);
    bool follow(std::size_t start);
    void keep(const Thumbnail& thumbnail);

    CExif& reader_;
    tag_ExifInfo& info_;
    std::span<unsigned char> bytes_;
    std::size_t length_;
    ByteOrder order_;
    int open_ = 0;
    unsigned char* last_referenced_ = nullptr;
    std::bitset<0x10000> seen_;  // by start: no segment is longer
};

}  // namespace tool
