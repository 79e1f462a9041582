// Rows of a line image in chunks, of which a processor handles many pixels at once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "util/line_image.h"

namespace tool {

// Neighbouring pixels of a row. Operators work pixel by pixel; a comparison gives 255 for true and 0 for false.
using Pixels = std::uint8_t __attribute__((vector_size(16)));  // every 64-bit processor has registers of that size

inline Pixels load(const std::uint8_t* first) {
    Pixels pixels;
    std::memcpy(&pixels, first, sizeof pixels);
    return pixels;
}

inline void store(Pixels pixels, std::uint8_t* first) {
    std::memcpy(first, &pixels, sizeof pixels);
}

inline Pixels all(std::uint8_t value) {
    return Pixels{} + value;
}

inline Pixels where(auto comparison) {
    return reinterpret_cast<Pixels>(comparison);
}

inline bool any(Pixels comparison) {
    std::uint64_t halves[2];
    std::memcpy(halves, &comparison, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

inline constexpr int chunk_size = 64;  // a cache line
inline constexpr int chunk_step = sizeof(Pixels);

// Pixels of a row. Those at -1 and at chunk_size can be read, too, and the same of the rows beside it.
struct Chunk {
    std::uint8_t* row;
    std::ptrdiff_t width;

    const std::uint8_t* above() const { return row - width; }
    const std::uint8_t* below() const { return row + width; }
};

// For an image that is narrower than a chunk: works on a copy that ends where the image does. What it holds in front of
// the image counts as nothing; neither does the row's first pixel, as nobody looks to the left, so that only pixels
// inside the image change.
template <class Work>
void work_on_copy(std::uint8_t* row, std::ptrdiff_t width, Work work) {
    constexpr std::uint8_t neither = 1;
    std::uint8_t copy[3][chunk_size + 2];
    const auto count = static_cast<std::size_t>(width), first = sizeof copy[0] - count;
    std::memset(copy, neither, sizeof copy);
    for (int i = 0; i < 3; ++i) std::memcpy(copy[i] + first, row + (i - 1) * width, count);
    copy[1][first] = neither;
    work(Chunk{copy[1] + 1, sizeof copy[0]});
    std::memcpy(row + 1, copy[1] + first + 1, count - 2);
}

// Calls work(chunk, x) from the left for chunks that cover the pixels [from, end) inside row y. The last chunk of a row
// may reach back over pixels in front of it, so work must leave alone what it did or had no need to do.
template <class Work>
void for_each_chunk(LineImage image, int y, int from, int end, Work work) {
    const std::ptrdiff_t width = image.width;
    std::uint8_t* const row = image.pixels + y * width;
    if (image.width < chunk_size + 2) {
        work_on_copy(row, width, [&](Chunk chunk) { work(chunk, image.width - 1 - chunk_size); });
        return;
    }
    for (int x = from; x < end; x += chunk_size) {
        x = std::min(x, image.width - 1 - chunk_size);
        work(Chunk{row + x, width}, x);
    }
}

// The same for all of the pixels inside the row.
template <class Work>
void for_each_chunk(LineImage image, int y, Work work) {
    for_each_chunk(image, y, 1, image.width - 1, work);
}

}  // namespace tool
