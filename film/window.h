// Films as they are seen: 16 bits of grey through a window of 8.
#pragma once

#include <optional>

#include "film/film.h"

namespace tool {

struct FilmView {
    enum class Greys {
        automatic,  // the window or table of the file; without one, all that the film's depth can hold
        full,       // from the lowest value in the film to the highest
        given       // `window`
    };

    Greys greys = Greys::automatic;
    GreyWindow window = {};
    bool inverted = false;
};

// What each sample of a grey film becomes: 0 is black, 255 white. As many entries as samples can be, 2^bits.
std::vector<std::uint8_t> shades(const Film& film, const FilmView& view = {});

// The window that `view` comes down to, in values of the device; nothing where a table of the file is used.
std::optional<GreyWindow> window_of(const Film& film, const FilmView& view = {});

// 0xAARRGGBB, colours multiplied by alpha, rows from the top. Of colours only inverting changes anything.
std::vector<std::uint32_t> shown_pixels(const Film& film, const FilmView& view = {});

}  // namespace tool
