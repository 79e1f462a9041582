// The records are read by hosts built elsewhere: the place of every field is part of the interface. The same on
// LP64 (Linux, macOS) and LLP64 (Windows); where pointers have 4 bytes, what follows one moves up.
#pragma once

#include <Exif.h>

namespace tool::layout {

inline constexpr std::size_t pointer = sizeof(void*);
inline constexpr std::size_t thumbnail = pointer == 8 ? 1200 : 1196;
inline constexpr std::size_t sections_end = 264 + pointer + sizeof(CExif::Sections);
static_assert(pointer == 8 || pointer == 4);
static_assert(pointer == 4 || sections_end == 592);

static_assert(offsetof(tag_ExifInfo, ExifVersion) == 0);
static_assert(offsetof(tag_ExifInfo, Make) == 5);
static_assert(offsetof(tag_ExifInfo, Model) == 37);
static_assert(offsetof(tag_ExifInfo, DateTimeOriginal) == 77);
static_assert(offsetof(tag_ExifInfo, Height) == 100);
static_assert(offsetof(tag_ExifInfo, Width) == 104);
static_assert(offsetof(tag_ExifInfo, Orientation) == 108);
static_assert(offsetof(tag_ExifInfo, IsColor) == 112);
static_assert(offsetof(tag_ExifInfo, Process) == 116);
static_assert(offsetof(tag_ExifInfo, FlashUsed) == 120);
static_assert(offsetof(tag_ExifInfo, FocalLength) == 124);
static_assert(offsetof(tag_ExifInfo, ExposureTime) == 128);
static_assert(offsetof(tag_ExifInfo, FNumber) == 132);
static_assert(offsetof(tag_ExifInfo, SubjectDistance) == 136);
static_assert(offsetof(tag_ExifInfo, CcdWidth) == 140);
static_assert(offsetof(tag_ExifInfo, ExposureBias) == 144);
static_assert(offsetof(tag_ExifInfo, LightSource) == 148);
static_assert(offsetof(tag_ExifInfo, MeteringMode) == 152);
static_assert(offsetof(tag_ExifInfo, ExposureProgram) == 156);
static_assert(offsetof(tag_ExifInfo, IsoSpeed) == 160);
static_assert(offsetof(tag_ExifInfo, CompressedBitsPerPixel) == 164);
static_assert(offsetof(tag_ExifInfo, FocalPlaneXResolution) == 168);
static_assert(offsetof(tag_ExifInfo, FocalPlaneYResolution) == 172);
static_assert(offsetof(tag_ExifInfo, FocalPlaneUnit) == 176);
static_assert(offsetof(tag_ExifInfo, XResolution) == 180);
static_assert(offsetof(tag_ExifInfo, YResolution) == 184);
static_assert(offsetof(tag_ExifInfo, ResolutionUnit) == 188);
static_assert(offsetof(tag_ExifInfo, Brightness) == 192);
static_assert(offsetof(tag_ExifInfo, Comments) == 196);
static_assert(offsetof(tag_ExifInfo, ThumbnailPointer) == thumbnail);
static_assert(offsetof(tag_ExifInfo, ThumbnailSize) == thumbnail + pointer);
static_assert(offsetof(tag_ExifInfo, IsExif) == thumbnail + pointer + 4);
static_assert(sizeof(tag_ExifInfo) == thumbnail + pointer + 8);

static_assert(offsetof(CExif, Info) == 0);
static_assert(offsetof(CExif, LastError) == pointer);
static_assert(offsetof(CExif, ExifImageWidth) == 256 + pointer);
static_assert(offsetof(CExif, MotorolaOrder) == 260 + pointer);
static_assert(offsetof(CExif, Sections) == 264 + pointer);
static_assert(offsetof(tag_ExifSection, Data) == 0);
static_assert(offsetof(tag_ExifSection, Type) == pointer);
static_assert(offsetof(tag_ExifSection, Size) == 4 + pointer);
static_assert(sizeof(tag_ExifSection) == 8 + pointer);
static_assert(offsetof(CExif, SectionsRead) == sections_end);
static_assert(offsetof(CExif, OwnsInfo) == sections_end + 4);
static_assert(sizeof(CExif) == sections_end + 8);

}  // namespace tool::layout
