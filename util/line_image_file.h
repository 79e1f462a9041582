// Line images as files: PGM pictures, which any picture program shows. docs/line_images.md has the rules.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "util/line_image.h"

namespace tool {

struct LineImageFile {
    int width = 0, height = 0;             // at least 1
    std::span<const std::uint8_t> pixels;  // width * height, in the bytes that were read
};

// Nothing unless the bytes are one whole picture and no more.
std::optional<LineImageFile> line_image_file(std::string_view bytes);

std::string file_of(LineImage image);

}  // namespace tool
