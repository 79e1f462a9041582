#include "exif/directory.h"

#include "exif/last_error.h"
#include "exif/value.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr std::uint64_t count_size = 2, entry_size = 12;
constexpr int most_open = 64;

enum Tag : std::uint32_t {
    thumbnail_offset = 0x0201,
    thumbnail_size = 0x0202,
    exif_link = 0x8769,
    interoperability_link = 0xA005
};

}  // namespace

bool DirectoryReader::read(std::uint64_t start) {
    if (open_ == most_open || seen_[start]) return true;
    seen_.set(start);
    ++open_;
    const bool good = read_entries(start);
    --open_;
    return good;
}

bool DirectoryReader::read_entries(std::uint64_t start) {
    const std::uint32_t count = get_u16(base_ + start, order_);
    const std::uint64_t end = start + count_size + entry_size * count;
    if (end > length_) return failed(reader_, "Illegally sized directory");
    Thumbnail thumbnail;
    for (std::uint64_t at = start + count_size; at < end; at += entry_size)
        if (!read_entry(at, thumbnail)) return false;
    // Kept: the next directory, which describes the thumbnail, fills the same record, so that its resolution replaces
    // the picture's own.
    // Kept: only the link's first two bytes are read. In big-endian files these are 0, so that the next directory is
    // found in little-endian files only.
    const std::uint32_t next = get_u16(base_ + end, order_);
    if (next != 0 && !follow(next)) return false;
    keep(thumbnail);
    return true;
}

bool DirectoryReader::read_entry(std::uint64_t at, Thumbnail& thumbnail) {
    unsigned char* const bytes = base_ + at;
    Entry entry{get_u16(bytes, order_), get_u16(bytes + 2, order_), bytes + 8, 0, order_};
    if (!is_format(entry.format)) return failed(reader_, "Illegal format code in EXIF dir");
    const std::uint64_t byte_count = std::uint64_t{get_u32(bytes + 4, order_)} * component_size(entry.format);
    if (byte_count > 4) {
        const std::uint64_t offset = get_u32(bytes + 8, order_);
        if (offset + byte_count > length_) return failed(reader_, "Illegal pointer offset value in EXIF.");
        entry.value = base_ + offset;
    }
    entry.byte_count = static_cast<std::size_t>(byte_count);
    switch (entry.tag) {
        case thumbnail_offset: thumbnail.offset = truncated(converted(entry.value, entry.format, order_)); return true;
        case thumbnail_size: thumbnail.size = truncated(converted(entry.value, entry.format, order_)); return true;
        case exif_link:
        case interoperability_link: return follow(get_u32(entry.value, order_));
        default: store(entry, reader_); return true;
    }
}

bool DirectoryReader::follow(std::uint64_t start) {
    if (start > length_) return failed(reader_, "Illegal subdirectory link");
    read(start);
    return true;
}

void DirectoryReader::keep(const Thumbnail& thumbnail) {
    if (thumbnail.offset <= 0 || thumbnail.size <= 0) return;
    if (std::int64_t{thumbnail.offset} + thumbnail.size > static_cast<std::int64_t>(length_)) return;
    reader_.Info->ThumbnailPointer = base_ + thumbnail.offset;
    reader_.Info->ThumbnailSize = static_cast<std::uint32_t>(thumbnail.size);
}

}  // namespace tool
