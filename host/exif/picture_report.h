// Pictures' headers as text: blocks for people, JSON and CSV for programs. All UTF-8, without control characters.
#pragma once

#include <span>
#include <string>

#include "host/exif/picture.h"

namespace cephtool {

// At most 80 columns wide; what the picture does not tell is left out.
std::string picture_table(const Picture& picture, bool colour);

// One document for all pictures; what one does not tell is null.
std::string picture_json(std::span<const Picture> pictures);

// One row a picture, after RFC 4180 with line ends CR LF; what one does not tell is empty.
std::string picture_csv(std::span<const Picture> pictures);

}  // namespace cephtool
