// The exported reader.
#include <Exif.h>

#include <functional>
#include <new>

#include "exif/comment.h"
#include "exif/directory.h"
#include "exif/exif_block.h"
#include "exif/frame.h"
#include "exif/last_error.h"
#include "exif/layout.h"
#include "exif/marker_walk.h"
#include "exif/value.h"

namespace {

tool::ByteOrder order_of(const CExif& reader) {
    return static_cast<tool::ByteOrder>(reader.MotorolaOrder != 0);
}

const unsigned char* bytes_at(const void* p) {
    return static_cast<const unsigned char*>(p);
}

}  // namespace

CExif::CExif(tag_ExifInfo* info)
    : Info(info ? info : new (std::nothrow) tag_ExifInfo{}),
      LastError{},
      ExifImageWidth(0),
      MotorolaOrder(0),
      Sections{},
      SectionsRead(0),
      OwnsInfo(info ? 0 : 1) {}

CExif::~CExif() {
    for (const tag_ExifSection& section : Sections) delete[] section.Data;
    if (OwnsInfo) delete Info;
}

bool CExif::DecodeExif(std::FILE* stream) {
    if (!Info) return tool::failed(*this, "Could not allocate memory");
    return stream && tool::walk_markers(tool::FileSource(stream), *this);
}

bool CExif::DecodeExif(const unsigned char* bytes, std::size_t count) {
    if (!Info) return tool::failed(*this, "Could not allocate memory");
    return tool::walk_markers(tool::MemorySource(bytes, count), *this);
}

void CExif::process_SOFn(const unsigned char* data, int marker) {
    if (data && Info) tool::read_frame(data, marker, *Info);
}

void CExif::process_COM(const unsigned char* data, int length) {
    if (Info) tool::read_comment({data, data && length > 0 ? static_cast<std::size_t>(length) : 0}, *Info);
}

bool CExif::process_EXIF(unsigned char* data, unsigned int length) {
    return Info && tool::read_exif({data, data ? length : 0}, length, *this);
}

bool CExif::ProcessExifDir(unsigned char* dirStart, unsigned char* offsetBase, unsigned int exifLength,
                           tag_ExifInfo* info, unsigned char** lastReferenced) {
    if (!dirStart || !offsetBase || !info) return tool::failed(*this, "Illegally sized directory");
    // A start in front of the base becomes one far behind the end.
    const auto start = reinterpret_cast<std::uintptr_t>(dirStart) - reinterpret_cast<std::uintptr_t>(offsetBase);
    tool::DirectoryReader directories(*this, *info, {offsetBase, exifLength}, exifLength);
    const bool good = directories.read(start);
    unsigned char* const reached = directories.last_referenced();
    if (lastReferenced && std::less<>()(*lastReferenced, reached)) *lastReferenced = reached;
    return good;
}

double CExif::ConvertAnyFormat(const void* p, int format) const {
    return p ? tool::converted(bytes_at(p), static_cast<std::uint32_t>(format), order_of(*this)) : 0.0;
}

int CExif::Get16m(const void* p) {
    return p ? static_cast<int>(tool::jpeg_u16(bytes_at(p))) : 0;
}

int CExif::Get16u(const void* p) const {
    return p ? static_cast<int>(tool::get_u16(bytes_at(p), order_of(*this))) : 0;
}

std::int32_t CExif::Get32s(const void* p) const {
    return p ? tool::get_s32(bytes_at(p), order_of(*this)) : 0;
}

std::uint32_t CExif::Get32u(const void* p) const {
    return p ? tool::get_u32(bytes_at(p), order_of(*this)) : 0;
}
