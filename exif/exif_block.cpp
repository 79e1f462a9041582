#include "exif/exif_block.h"

#include <cstring>

#include "exif/directory.h"
#include "exif/last_error.h"

namespace tool {
namespace {

constexpr int length_size = 2;

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

bool read_exif(const tag_ExifSection& section, CExif& reader) {
    tag_ExifInfo& info = *reader.Info;
    info.FlashUsed = 0;
    info.Comments[0] = '\0';
    reader.ExifImageWidth = 0;

    constexpr int name_size = 6, directory_at = 8;
    unsigned char* const name = section.Data + length_size;
    if (!begins_with(name, "Exif\0\0", name_size)) return failed(reader, "Incorrect Exif header");
    unsigned char* const tiff = name + name_size;
    if (!read_header(tiff, reader)) return false;
    // Kept: the size counts the two length bytes, so that every bound is two bytes behind the segment's end. Cameras
    // list thumbnails that end there.
    const auto length = static_cast<std::uint32_t>(section.Size - name_size);
    // Kept: the first directory stands where it nearly always does, whatever its offset says.
    if (!DirectoryReader(reader, tiff, length).read(directory_at)) return false;
    if (info.FocalPlaneXResolution != 0) {
        info.CcdWidth = static_cast<float>(reader.ExifImageWidth) * info.FocalPlaneUnit / info.FocalPlaneXResolution;
    }
    return true;
}

}  // namespace tool
