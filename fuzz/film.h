// Films of any format: either there is one whose pixels are all there, or a sentence that says why not.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "film/film_scale.h"
#include "film/window.h"

namespace tool_fuzz {

inline void check_film(const std::uint8_t* data, std::size_t size) {
    const auto require = [](bool holds) {
        if (!holds) std::abort();
    };
    constexpr std::size_t pixel_limit = 100'000;
    const tool::Film film = tool::decode_film(std::string_view(reinterpret_cast<const char*>(data), size), pixel_limit);
    const std::size_t pixels = static_cast<std::size_t>(film.width) * static_cast<std::size_t>(film.height);
    require(film.grey.size() + film.colour.size() == pixels && pixels <= pixel_limit);
    require(film.grey.empty() || film.colour.empty());
    require(film.error.empty() == static_cast<bool>(film));
    require(film.bits >= 1 && film.bits <= 16);
    for (const std::uint16_t sample : film.grey) require(sample >> film.bits == 0);
    for (const std::uint32_t pixel : film.colour) require((pixel & 0xFF) <= pixel >> 24);  // multiplied by alpha
    for (const tool::FilmScale& scale : {scale_of_header(film.header), scale_of_resolution(film.header)}) {
        require(!scale.mm_per_pixel || (*scale.mm_per_pixel >= 0 && scale.error.empty() && !scale.source.empty()));
    }
    if (film) require(shown_pixels(film, {.inverted = true}).size() == pixels);
}

}  // namespace tool_fuzz
