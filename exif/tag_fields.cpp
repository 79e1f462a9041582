#include "exif/tag_fields.h"

#include <algorithm>
#include <cstring>

#include "exif/last_error.h"
#include "exif/value.h"
#include "platform/arithmetic.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr double ln_2 = 0.69314718055994530942;

float real(const Entry& entry) {
    return static_cast<float>(entry.number());
}

// The first `count` bytes, the rest of the field filled with NULs.
template <std::size_t size>
void copy_bytes(std::span<const unsigned char> bytes, std::size_t count, char (&field)[size]) {
    std::memset(field, 0, size);
    std::memcpy(field, bytes.data(), std::min(count, size - 1));
}

// Up to a NUL, at most `limit` characters.
template <std::size_t size>
void copy_text(std::span<const unsigned char> text, char (&field)[size], std::size_t limit = size - 1) {
    text = text.first(std::min(text.size(), limit));
    copy_bytes(text, static_cast<std::size_t>(std::ranges::find(text, 0) - text.begin()), field);
}

// Kept: a comment's character code is passed over when it is ASCII and belongs to the text otherwise ("UNICODE").
void copy_user_comment(std::span<unsigned char> value, tag_ExifInfo& info) {
    // Kept: blanks at the end are cut off in the segment itself, not in the copy.
    for (std::size_t end = value.size(); end > 0 && value[end - 1] == ' '; --end) value[end - 1] = '\0';
    constexpr std::size_t text_limit = 199, code_size = 5, code_end = 10;
    if (value.size() >= code_size && std::memcmp(value.data(), "ASCII", code_size) == 0) {
        std::size_t start = code_size;
        const std::size_t end = std::min(value.size(), code_end);
        while (start < end && (value[start] == '\0' || value[start] == ' ')) ++start;
        if (start == end) return;
        value = value.subspan(start);
    }
    copy_text(value, info.Comments, text_limit);
}

void set_orientation(std::int32_t value, CExif& reader, tag_ExifInfo& info) {
    const bool known = value >= 1 && value <= 8;
    info.Orientation = known ? value : 0;
    if (!known) set_last_error(reader, "Undefined rotation value");
}

// Kept: small values are those of early cameras that counted steps.
std::int32_t iso_speed(std::int32_t value) {
    return value < 50 ? truncated(value * 200.0) : value;
}

// Inches of a resolution unit; an unknown one leaves the field alone.
void set_unit(std::int32_t code, float& field) {
    // Kept: seven digits of 1/2.54, 1/25.4 and 1/25400; the first is another float than the quotient itself.
    constexpr float inches[] = {1.0F, 1.0F, 0.3937008F, 0.03937008F, 3.937008e-05F};
    if (code >= 1 && code <= 5) field = inches[code - 1];
}

// APEX values (EXIF 2.3, annex C): time 2^-Tv, aperture 2^(Av/2). A field set by the plain tag keeps its value.
void set_time_from_apex(double value, float& field) {
    if (field == 0) field = static_cast<float>(1 / tool::exp(value * ln_2));
}

void set_aperture_from_apex(double value, float& field) {
    if (field == 0) field = static_cast<float>(tool::exp(value * ln_2 * 0.5));
}

}  // namespace

double Entry::number() const {
    return converted(first.data(), format, order);
}

std::int32_t Entry::whole() const {
    return truncated(number());
}

void store(const Entry& entry, CExif& reader, tag_ExifInfo& info) {
    switch (entry.tag) {
        case 0x010F: return copy_text(entry.bytes, info.Make);
        case 0x0110: return copy_text(entry.bytes, info.Model);
        case 0x0112: return set_orientation(entry.whole(), reader, info);
        case 0x011A: info.XResolution = real(entry); return;
        case 0x011B: info.YResolution = real(entry); return;
        case 0x0128: return set_unit(entry.whole(), info.ResolutionUnit);
        case 0x829A: info.ExposureTime = real(entry); return;
        case 0x829D: info.FNumber = real(entry); return;
        case 0x8822: info.ExposureProgram = entry.whole(); return;
        case 0x8827: info.IsoSpeed = iso_speed(entry.whole()); return;
        case 0x9000:
            // Kept: four bytes whatever the entry counts.
            return copy_bytes(entry.first, 4, info.ExifVersion);
        case 0x9003: return copy_text(entry.bytes, info.DateTimeOriginal);
        case 0x9102: info.CompressedBitsPerPixel = entry.whole(); return;
        case 0x9201: return set_time_from_apex(entry.number(), info.ExposureTime);
        case 0x9202:
        case 0x9205: return set_aperture_from_apex(entry.number(), info.FNumber);
        case 0x9203: info.Brightness = real(entry); return;
        case 0x9204: info.ExposureBias = real(entry); return;
        case 0x9206: info.SubjectDistance = real(entry); return;
        case 0x9207: info.MeteringMode = entry.whole(); return;
        case 0x9208: info.LightSource = entry.whole(); return;
        case 0x9209:
            // Kept: the low three bits, so that a strobe's return light counts as well as its flash.
            if (entry.whole() & 7) info.FlashUsed = 1;
            return;
        case 0x920A: info.FocalLength = real(entry); return;
        case 0x9286: return copy_user_comment(entry.bytes, info);
        case 0xA002:
        case 0xA003:
            // Kept: width and height feed one value, as a turned picture may have its sensor's long side as either.
            reader.ExifImageWidth = std::max(reader.ExifImageWidth, entry.whole());
            return;
        case 0xA20E: info.FocalPlaneXResolution = real(entry); return;
        case 0xA20F: info.FocalPlaneYResolution = real(entry); return;
        case 0xA210: return set_unit(entry.whole(), info.FocalPlaneUnit);
        default: return;
    }
}

}  // namespace tool
