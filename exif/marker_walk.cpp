#include "exif/marker_walk.h"

#include <memory>
#include <new>

#include "exif/comment.h"
#include "exif/exif_block.h"
#include "exif/frame.h"
#include "exif/last_error.h"

namespace tool {
namespace {

enum Marker {
    first_frame = 0xC0,
    huffman_tables = 0xC4,
    reserved_frame = 0xC8,
    arithmetic_conditions = 0xCC,
    last_frame = 0xCF,
    start_of_image = 0xD8,
    end_of_image = 0xD9,
    start_of_scan = 0xDA,
    jfif = 0xE0,
    exif = 0xE1,
    comment = 0xFE,
};

bool is_frame(int marker) {
    return marker >= first_frame && marker <= last_frame && marker != huffman_tables && marker != reserved_frame &&
           marker != arithmetic_conditions;
}

bool too_many_sections(CExif& reader) {
    return reader.SectionsRead >= CExif::SECTION_MAX;
}

// Zeros behind a segment, so that what reads a little too far in a damaged one reads zeros.
constexpr std::size_t zeros = 16;

template <class Source>
class MarkerWalk {
 public:
    MarkerWalk(Source source, CExif& reader) : source_(source), reader_(reader) {}

    bool run() {
        if (source_.next() != 0xFF || source_.next() != start_of_image) return false;
        while (!too_many_sections(reader_)) {
            tag_ExifSection section{};
            if (!read_marker(section) || !read_segment(section)) return false;
            if (section.Type == end_of_image) return failed(reader_, "No image in jpeg!");
            if (section.Type == start_of_scan) return true;
            if (!is_kept(section)) drop();
        }
        return failed(reader_, "Too many sections in jpg file");
    }

 private:
    bool end_of_file() { return failed(reader_, "Premature end of file?"); }

    // A byte in front of which no 0xFF stands counts as a marker, too.
    bool read_marker(tag_ExifSection& section) {
        constexpr int most_padding = 6;  // with the marker's own 0xFF
        int byte = source_.next();
        for (int padding = 0; byte == 0xFF; byte = source_.next())
            if (++padding > most_padding) return failed(reader_, "too many padding unsigned chars!");
        if (byte < 0) return end_of_file();
        section.Type = byte;
        return true;
    }

    // Reads length and contents and puts the segment into the next slot.
    bool read_segment(tag_ExifSection& section) {
        const int high = source_.next();
        // An end of image that ends the file, as it should.
        if (high < 0 && section.Type == end_of_image) return failed(reader_, "No image in jpeg!");
        const int low = high < 0 ? -1 : source_.next();
        if (low < 0) return end_of_file();
        section.Size = high << 8 | low;
        if (section.Size < 2) return failed(reader_, "invalid marker");

        const auto size = static_cast<std::size_t>(section.Size);
        std::unique_ptr<unsigned char[]> data(new (std::nothrow) unsigned char[size + zeros]);
        if (!data) return failed(reader_, "Could not allocate memory");
        data[0] = static_cast<unsigned char>(high);
        data[1] = static_cast<unsigned char>(low);
        if (!source_.read(data.get() + 2, size - 2)) return end_of_file();
        std::memset(data.get() + size, 0, zeros);
        section.Data = data.release();
        reader_.Sections[reader_.SectionsRead++] = section;
        return true;
    }

    // Reads what the segment says; false when it is not worth its slot.
    bool is_kept(const tag_ExifSection& section) {
        const auto size = static_cast<std::size_t>(section.Size);
        if (is_frame(section.Type) && section.Size >= frame_bytes_read)
            read_frame(section.Data, section.Type, *reader_.Info);
        if (section.Type == jfif) return false;
        if (section.Type == exif) {
            if (!is_exif(section)) return false;
            // Kept: the size counts the two length bytes, so that every bound is two bytes behind the segment's end.
            // Cameras list thumbnails that end there.
            reader_.Info->IsExif = read_exif({section.Data + 2, size - 2 + zeros}, size, reader_);
        }
        if (section.Type == comment) {
            if (has_comment_) return false;
            has_comment_ = true;
            read_comment({section.Data, size}, *reader_.Info);
        }
        return true;
    }

    // Frees the segment that was read last.
    void drop() {
        tag_ExifSection& slot = reader_.Sections[--reader_.SectionsRead];
        delete[] slot.Data;
        slot = {};
    }

    Source source_;
    CExif& reader_;
    bool has_comment_ = false;
};

}  // namespace

template <class Source>
bool walk_markers(Source source, CExif& reader) {
    return MarkerWalk<Source>(source, reader).run();
}

template bool walk_markers(FileSource source, CExif& reader);
template bool walk_markers(MemorySource source, CExif& reader);

}  // namespace tool
