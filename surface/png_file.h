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

}  // namespace tool
