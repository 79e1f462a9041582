// EXIF reader: picture size, camera and exposure data, comment and embedded thumbnail of a JPEG file.
//
// A reader decodes one file. Texts are the file's own bytes, cut to their fields and ended with a NUL.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "framework/export.h"

// All zero in a record that the reader makes itself; a caller's record keeps what the file does not say.
struct tag_ExifInfo {
    char ExifVersion[5];
    char Make[32];
    char Model[40];
    char DateTimeOriginal[20];  // as the file has it, "YYYY:MM:DD HH:MM:SS"
    std::int32_t Height;        // pixels, from the frame header
    std::int32_t Width;
    std::int32_t Orientation;  // 1 to 8; 0 when out of range or not told
    std::int32_t IsColor;      // 1: exactly three components
    std::int32_t Process;      // marker of the frame, 0xC0 (baseline) to 0xCF
    std::int32_t FlashUsed;    // 1: it was fired, or the file says something of its light coming back
    float FocalLength;         // mm
    float ExposureTime;        // s
    float FNumber;
    float SubjectDistance;     // m
    float CcdWidth;            // inches; 0 when the file says too little about its sensor
    float ExposureBias;        // EV
    std::int32_t LightSource;  // this and the next two as EXIF numbers them
    std::int32_t MeteringMode;
    std::int32_t ExposureProgram;
    std::int32_t IsoSpeed;
    std::int32_t CompressedBitsPerPixel;
    float FocalPlaneXResolution;  // pixels a unit
    float FocalPlaneYResolution;
    float FocalPlaneUnit;  // inches
    float XResolution;     // pixels a unit
    float YResolution;
    float ResolutionUnit;  // inches
    float Brightness;      // APEX
    char Comments[1000];
    unsigned char* ThumbnailPointer;  // inside a segment that the reader holds: gone with the reader
    std::uint32_t ThumbnailSize;      // bytes
    bool IsExif;
};

// A header segment of the file, kept until the reader goes.
struct tag_ExifSection {
    unsigned char* Data;  // the two length bytes, the contents, then sixteen zero bytes; owned by the reader
    std::int32_t Type;    // marker
    std::int32_t Size;    // bytes with the length, without the zeros
};

class TOOL_API CExif {
 public:
    enum { SECTION_MAX = 20 };

    // Fills `info`, which must outlive the decoding and is never freed; without one, a record of the reader's own.
    explicit CExif(tag_ExifInfo* info = nullptr);
    ~CExif();
    CExif(const CExif&) = delete;
    CExif& operator=(const CExif&) = delete;

    // Reads from the stream's position through the header of the first scan. False with the reason in LastError, or
    // with LastError untouched when this is no JPEG; Info then holds what was read before. A file without EXIF, or with
    // an EXIF segment that is damaged (see LastError), gives true with IsExif false.
    // Another call appends to the sections, and fails once there are twenty.
    bool DecodeExif(std::FILE* stream);
    // Addition of this project: the same for `count` bytes in memory, which are copied.
    bool DecodeExif(const unsigned char* bytes, std::size_t count);

    // The steps of DecodeExif, for a host that finds segments elsewhere. They fill Info. The bytes are the caller's; a
    // null address holds none, gives 0 and false, and fills nothing.
    //
    // A frame header: `data` begins with its two length bytes and holds at least 8 bytes.
    void process_SOFn(const unsigned char* data, int marker);
    // A comment segment of `length` bytes, its two length bytes included. Info->Comments becomes its text, "" when
    // there is none.
    void process_COM(const unsigned char* data, int length);
    // An EXIF block of `length` bytes from the text "Exif" on; sets MotorolaOrder. Nothing behind it is read, and
    // nothing behind its first 65,541 bytes, which are more than a segment holds. False with the reason in
    // LastError. Blanks at the end of a comment are overwritten, and Info->ThumbnailPointer points into it.
    bool process_EXIF(unsigned char* data, unsigned int length);
    // The directory at `dirStart` and those it links to, in the order that MotorolaOrder says, into `info`, in a block
    // of `exifLength` bytes (at most 65,535 count) from its byte-order mark, `offsetBase`, on. *lastReferenced is moved
    // behind the last byte that an entry's value has, unless it is there or further on already, or null. False with the
    // reason in LastError, also for a start outside the block.
    bool ProcessExifDir(unsigned char* dirStart, unsigned char* offsetBase, unsigned int exifLength, tag_ExifInfo* info,
                        unsigned char** lastReferenced);
    // The number in a component of an EXIF format, 1 to 12, which has 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4 or 8 bytes;
    // 0 for texts and bytes without a meaning (2 and 7), for a ratio whose denominator is 0, and for any other format.
    double ConvertAnyFormat(const void* p, int format) const;
    // Unsigned 16 bits of a big-endian file, and in the order that MotorolaOrder says.
    static int Get16m(const void* p);
    int Get16u(const void* p) const;
    // 32 bits in the order that MotorolaOrder says.
    std::int32_t Get32s(const void* p) const;
    std::uint32_t Get32u(const void* p) const;

    tag_ExifInfo* Info;           // the record that is filled
    char LastError[256];          // one sentence
    std::int32_t ExifImageWidth;  // larger of the pixel dimensions that EXIF tells
    std::int32_t MotorolaOrder;   // 0 little-endian ("II"), 1 big-endian ("MM")
    tag_ExifSection Sections[SECTION_MAX];
    std::int32_t SectionsRead;  // of Sections in use
    std::int32_t OwnsInfo;      // 1: Info goes with the reader
};
