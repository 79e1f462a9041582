#include "exif/directory.h"

#include <functional>

#include "exif/last_error.h"
#include "exif/value.h"

namespace tool {
namespace {

constexpr std::size_t count_size = 2, entry_size = 12;
constexpr int most_open = 64;

enum Tag : std::uint32_t {
    thumbnail_offset = 0x0201,
    thumbnail_size = 0x0202,
    exif_link = 0x8769,
    interoperability_link = 0xA005
};

}  // namespace

std::array<unsigned char, 8> DirectoryReader::eight_bytes(std::size_t at) const {
    std::array<unsigned char, 8> eight{};
    const auto there = bytes_.subspan(std::min<std::size_t>(at, bytes_.size()));
    std::copy_n(there.begin(), std::min(there.size(), eight.size()), eight.begin());
    return eight;
}

bool DirectoryReader::read(std::size_t start) {
    if (start > length_) return failed(reader_, "Illegally sized directory");
    if (open_ == most_open || seen_[start]) return true;
    seen_.set(start);
    ++open_;
    const bool good = read_entries(start);
    --open_;
    return good;
}

bool DirectoryReader::read_entries(std::size_t start) {
    const std::size_t end = start + count_size + entry_size * u16(start);
    if (end > length_) return failed(reader_, "Illegally sized directory");
    Thumbnail thumbnail;
    for (std::size_t at = start + count_size; at < end; at += entry_size)
        if (!read_entry(at, thumbnail)) return false;
    // Kept: the next directory, which describes the thumbnail, fills the same record, so that its resolution replaces
    // the picture's own.
    // Kept: only the link's first two bytes are read. In big-endian files these are 0, so that the next directory is
    // found in little-endian files only.
    const std::uint32_t next = u16(end);
    if (next != 0 && !follow(next)) return false;
    keep(thumbnail);
    return true;
}

bool DirectoryReader::read_entry(std::size_t at, Thumbnail& thumbnail) {
    const std::uint32_t tag = u16(at), format = u16(at + 2);
    if (!is_format(format)) return failed(reader_, "Illegal format code in EXIF dir");
    const std::uint64_t byte_count = std::uint64_t{u32(at + 4)} * component_size(format);
    std::size_t value_at = at + 8;
    if (byte_count > 4) {
        value_at = u32(at + 8);
        if (value_at + byte_count > length_) return failed(reader_, "Illegal pointer offset value in EXIF.");
    }
    const Entry entry{tag, format, eight_bytes(value_at),
                      bytes_.subspan(value_at, static_cast<std::size_t>(byte_count)), order_};
    unsigned char* const value_end = entry.bytes.data() + byte_count;
    if (std::less<>()(last_referenced_, value_end)) last_referenced_ = value_end;
    switch (tag) {
        case thumbnail_offset: thumbnail.offset = entry.whole(); return true;
        case thumbnail_size: thumbnail.size = entry.whole(); return true;
        case exif_link:
        case interoperability_link: return follow(get_u32(entry.first.data(), order_));
        default: store(entry, reader_, info_); return true;
    }
}

bool DirectoryReader::follow(std::size_t start) {
    if (start > length_) return failed(reader_, "Illegal subdirectory link");
    read(start);
    return true;
}

void DirectoryReader::keep(const Thumbnail& thumbnail) {
    if (thumbnail.offset <= 0 || thumbnail.size <= 0) return;
    if (std::int64_t{thumbnail.offset} + thumbnail.size > static_cast<std::int64_t>(length_)) return;
    info_.ThumbnailPointer = bytes_.data() + thumbnail.offset;
    info_.ThumbnailSize = static_cast<std::uint32_t>(thumbnail.size);
}

}  // namespace tool
