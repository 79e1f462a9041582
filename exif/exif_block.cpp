#include "exif/exif_block.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "exif/directory.h"
#include "exif/last_error.h"

namespace tool {
namespace {

constexpr int length_size = 2, name_size = 6, header_size = 8;

bool begins_with(const unsigned char* bytes, const char* text, std::size_t size) {
    return std::memcmp(bytes, text, size) == 0;
}

// The header of the TIFF form (TIFF 6.0, page 13) in which the directories stand; sets the byte order.
bool read_header(const unsigned char* tiff, CExif& reader) {
    const bool intel = begins_with(tiff, "II", 2);
    if (!intel && !begins_with(tiff, "MM", 2)) return failed(reader, "Invalid Exif alignment marker.");
    reader.MotorolaOrder = intel ? 0 : 1;
    const auto order = static_cast<ByteOrder>(reader.MotorolaOrder);
    if (get_u16(tiff + 2, order) != 42) return failed(reader, "Invalid Exif start (1)");
    const std::uint32_t first = get_u32(tiff + 4, order);
    if (first < 8 || first > 16) return failed(reader, "Suspicious offset of first IFD value");
    return true;
}

}  // namespace

bool is_exif(const tag_ExifSection& section) {
    return begins_with(section.Data + length_size, "Exif", 4);
}

bool read_exif(std::span<unsigned char> bytes, std::size_t length, CExif& reader) {
    tag_ExifInfo& info = *reader.Info;
    info.FlashUsed = 0;
    info.Comments[0] = '\0';
    reader.ExifImageWidth = 0;

    // A shorter block is filled up with zeros, which are no byte-order mark.
    std::array<unsigned char, name_size + header_size> head{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), head.size()), head.begin());
    if (!begins_with(head.data(), "Exif\0\0", name_size)) return failed(reader, "Incorrect Exif header");
    if (!read_header(head.data() + name_size, reader)) return false;
    // Kept: the first directory stands where it nearly always does, whatever its offset says.
    DirectoryReader directories(reader, info, bytes.subspan(name_size), length - name_size);
    if (!directories.read(header_size)) return false;
    if (info.FocalPlaneXResolution != 0) {
        info.CcdWidth = static_cast<float>(reader.ExifImageWidth) * info.FocalPlaneUnit / info.FocalPlaneXResolution;
    }
    return true;
}

}  // namespace tool
