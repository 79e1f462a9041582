// The X-ray under a tracing.
#pragma once

#include <surface/background.h>

#include <optional>
#include <string>

#include "host/case/case.h"

namespace cephtool {

struct Film {
    std::string bytes;         // of the file, JPEG or PNG
    tool::Background picture;  // decoded
};

// Throws an Error when the file can't be read or is no such picture.
Film read_film(const std::string& path);

// The film that the case names, which lies relative to the case; nothing when it names none.
std::optional<Film> named_film(const Case& record);

}  // namespace cephtool
