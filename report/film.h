// The X-ray under a tracing.
#pragma once

#include <film/film.h>
#include <surface/background.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cases/case.h"

namespace cephtool {

struct Film {
    tool::Background picture;              // as it is to be seen
    std::string file;                      // the same as a JPEG or PNG file
    std::vector<std::string> doubts = {};  // about what it shows, sentences
};

// The film as its file stores it. Throws an Error as read_film does.
tool::Film stored_film(const std::string& path);

// `pixels` of the film, as shown_pixels gives them, as a PNG file; nothing else of the film stands in it. Throws an
// Error in a build without PNG.
std::string film_png(std::span<const std::uint32_t> pixels, const tool::Film& film, double dpi);

// Throws an Error when the file can't be read or is no X-ray.
Film read_film(const std::string& path);

// The film that the case names, which lies relative to the case; nothing when it names none.
std::optional<Film> named_film(const Case& record);

}  // namespace cephtool
