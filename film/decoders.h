// The decoders behind decode_film. Each gives a film, or its `error`.
#pragma once

#include "film/film.h"

namespace tool {

bool film_size_allowed(std::uint64_t width, std::uint64_t height, std::size_t pixel_limit);
std::string film_size_error(std::uint64_t width, std::uint64_t height);

inline Film without_film(const std::string& error) {
    Film none;
    none.error = error;
    return none;
}

// A pixel of four channels of 8 bits that are not multiplied yet.
inline std::uint32_t multiplied_by_alpha(std::uint32_t red, std::uint32_t green, std::uint32_t blue,
                                         std::uint32_t alpha) {
    const auto channel = [&](std::uint32_t value) { return (value * alpha + 127) / 255; };
    return alpha << 24 | channel(red) << 16 | channel(green) << 8 | channel(blue);
}

Film decode_jpeg(std::string_view bytes, std::size_t pixel_limit);
Film decode_png(std::string_view bytes, std::size_t pixel_limit);
Film decode_tiff(std::string_view bytes, std::size_t pixel_limit);

enum class DicomPart { film, header };  // a header comes without pixels
Film decode_dicom(std::string_view bytes, std::size_t pixel_limit, DicomPart part = DicomPart::film);

// Whether the bytes begin as a DICOM file does, with or without the 128 bytes in front.
bool begins_as_dicom(std::string_view bytes);

}  // namespace tool
