// Pictures under a tracing: either there is a picture whose pixels are all there, or a sentence that says why not.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "surface/background.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t pixel_limit = 100'000;
    const tool::Background picture =
        tool::decode_background(std::string_view(reinterpret_cast<const char*>(data), size), pixel_limit);
    const std::size_t pixels = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    if (picture.pixels.size() != pixels || pixels > pixel_limit) std::abort();
    if (picture.error.empty() != static_cast<bool>(picture)) std::abort();
    for (const std::uint32_t pixel : picture.pixels)
        if ((pixel & 0xFF) > pixel >> 24) std::abort();  // colours are multiplied by alpha
    return 0;
}
