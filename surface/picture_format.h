// The decoders behind decode_background.
#pragma once

#include "surface/background.h"

namespace tool {

enum class PictureFormat { unknown, jpeg, png };

// By the first bytes.
inline PictureFormat picture_format(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xD8\xFF")) return PictureFormat::jpeg;
    if (bytes.starts_with("\x89PNG\r\n\x1A\n")) return PictureFormat::png;
    return PictureFormat::unknown;
}

bool background_size_allowed(std::uint64_t width, std::uint64_t height, std::size_t pixel_limit);
std::string size_error(std::uint64_t width, std::uint64_t height);

inline Background without_picture(const std::string& error) {
    Background none;
    none.error = error;
    return none;
}

Background decode_jpeg(std::string_view bytes, std::size_t pixel_limit);
Background decode_png(std::string_view bytes, std::size_t pixel_limit);

}  // namespace tool
