// Pictures as PNG files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tool {

// `pixels` are 0xRRGGBB, `stride` of them a row. `dpi` is written into the file. Empty when memory runs out.
//
// Made to be quick: most of a tracing is one colour, which any effort packs, and on films more effort gains a tenth in
// size for five times the time.
std::string png_file(const std::uint32_t* pixels, int width, int height, std::ptrdiff_t stride, double dpi);

// The same of greys from 0 to 255, without gaps between the rows.
std::string grey_png_file(const std::uint8_t* pixels, int width, int height, double dpi);

}  // namespace tool
