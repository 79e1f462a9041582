// The exported reader.
#include <Exif.h>

#include <new>

#include "exif/last_error.h"
#include "exif/layout.h"
#include "exif/marker_walk.h"

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
