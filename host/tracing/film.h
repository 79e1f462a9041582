// The X-ray under a tracing.
#pragma once

#include <surface/background.h>

#include <string>

namespace cephtool {

struct Film {
    std::string bytes;         // of the file, JPEG or PNG
    tool::Background picture;  // decoded
};

// Throws an Error when the file can't be read or is no such picture.
Film read_film(const std::string& path);

}  // namespace cephtool
