// Pictures of any bytes: from a file and from memory the reader says the same, keeps to its fields and its segments,
// and has a reason for every failure.
#include <Exif.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>
#include <vector>

#include "subject.h"

namespace {

using tool_fuzz::require;

template <std::size_t size>
bool ends(const char (&text)[size]) {
    return std::find(text, text + size, '\0') != text + size;
}

void check(const CExif& reader) {
    const tag_ExifInfo& info = *reader.Info;
    require(ends(info.ExifVersion) && ends(info.Make) && ends(info.Model) && ends(info.DateTimeOriginal) &&
            ends(info.Comments) && ends(reader.LastError));
    require(info.Orientation >= 0 && info.Orientation <= 8);
    require(reader.SectionsRead >= 0 && reader.SectionsRead <= CExif::SECTION_MAX);
    bool has_thumbnail = info.ThumbnailPointer == nullptr;
    for (int i = 0; i < CExif::SECTION_MAX; ++i) {
        const tag_ExifSection& section = reader.Sections[i];
        require((section.Data != nullptr) == (i < reader.SectionsRead));
        if (!section.Data) continue;
        require(section.Size == (section.Data[0] << 8 | section.Data[1]));
        // The zeros belong to what is held; all of a thumbnail can be read.
        const unsigned char* const end = section.Data + section.Size + 2;
        if (info.ThumbnailPointer > section.Data && info.ThumbnailPointer < end)
            has_thumbnail = static_cast<std::size_t>(end - info.ThumbnailPointer) >= info.ThumbnailSize;
    }
    require(has_thumbnail);
}

bool same(const CExif& a, const CExif& b) {
    tag_ExifInfo x = *a.Info, y = *b.Info;
    x.ThumbnailPointer = y.ThumbnailPointer = nullptr;
    return std::memcmp(&x, &y, sizeof x) == 0 && std::strcmp(a.LastError, b.LastError) == 0 &&
           a.SectionsRead == b.SectionsRead && a.ExifImageWidth == b.ExifImageWidth;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CExif from_memory;
    const bool good = from_memory.DecodeExif(data, size);
    check(from_memory);
    const bool is_jpeg = size >= 2 && data[0] == 0xFF && data[1] == 0xD8;
    require(good ? is_jpeg : is_jpeg == (from_memory.LastError[0] != '\0'));

    CExif from_file;
    std::FILE* const stream = std::tmpfile();
    require(stream != nullptr && (size == 0 || std::fwrite(data, 1, size, stream) == size));
    std::rewind(stream);
    require(from_file.DecodeExif(stream) == good);
    std::fclose(stream);
    require(same(from_memory, from_file));

    // A block of the caller's own, which ends where the input does.
    constexpr std::string_view name = "Exif";
    std::vector<std::uint8_t> block(std::search(data, data + size, name.begin(), name.end()), data + size);
    CExif steps;
    if (!block.empty() && !steps.process_EXIF(block.data(), static_cast<unsigned>(block.size())))
        require(steps.LastError[0] != '\0');
    require(!steps.Info->ThumbnailPointer ||
            steps.Info->ThumbnailPointer + steps.Info->ThumbnailSize <= block.data() + block.size());

    // Once more with the same reader: nothing is lost, the sections only grow.
    const int sections = from_memory.SectionsRead;
    from_memory.DecodeExif(data, size);
    check(from_memory);
    require(from_memory.SectionsRead >= sections);
    return 0;
}
