// The X-ray under a tracing.
#pragma once

#include <film/film_header.h>
#include <surface/background.h>

#include <optional>
#include <string>

#include "cases/case.h"

namespace cephtool {

struct Film {
    tool::Background picture;  // as it is to be seen
    std::string file;          // the same as a JPEG or PNG file
    tool::FilmHeader header;
};

// Throws an Error when the file can't be read or is no X-ray.
Film read_film(const std::string& path);

// The film that the case names, which lies relative to the case; nothing when it names none.
std::optional<Film> named_film(const Case& record);

}  // namespace cephtool
