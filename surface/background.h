// A picture that lies under a drawing, usually a radiograph: what the room film/ reads, as it is to be seen.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

struct Background {
    int width = 0, height = 0;          // at most 32,767 each
    std::vector<std::uint32_t> pixels;  // rows from the top, 0xAARRGGBB, colours multiplied by alpha
    std::string jpeg;                   // a JPEG file of the same picture, grey or colour, that a page takes as it is

    explicit operator bool() const { return width > 0; }
};

}  // namespace tool
