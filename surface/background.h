// A picture that lies under a tracing: JPEG or PNG, read from bytes that may be anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Fails until it holds a picture. Pixels come as the file stores them: an orientation noted in its EXIF data is not
// applied, as landmarks are counted in stored pixels.
struct Background {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;  // rows from the top, 0xAARRGGBB, colours multiplied by alpha
    std::string jpeg;                   // the file itself when a page may take it as it is
    std::string error;                  // one sentence when there is no picture

    explicit operator bool() const { return width > 0; }
};

inline constexpr std::size_t background_pixel_limit = 100'000'000;  // 400 MB; a radiograph has 5 to 30 million
inline constexpr int background_side_limit = 32'767;                // Cairo's own

// Never throws. A file that ends early is refused: half a radiograph must not be measured on.
Background decode_background(std::string_view bytes, std::size_t pixel_limit = background_pixel_limit);
Background read_background(const std::string& path);  // the path in UTF-8; at most 1 GB

}  // namespace tool
