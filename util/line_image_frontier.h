// The parts of a line image where thinning still has work: most pixels are done after the first iterations.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#include "util/line_image_chunk.h"

namespace tool {

// A set of tiles that cover the pixels inside the outermost rows and columns. It has one size, 16 KB, for every image,
// so that it lies on the stack: up to 4096 x 2048 pixels a tile is one chunk of one row, beyond that tiles grow.
class Frontier {
 public:
    // At least 3 pixels a side.
    Frontier(int width, int height) : end_x_(width - 1), end_y_(height - 1) {
        while ((width - 3) >> tile_width_bits_ >= tiles_a_row) ++tile_width_bits_;
        while ((height - 3) >> tile_height_bits_ >= tile_rows) ++tile_height_bits_;
        clear();
    }

    void clear() { fill(0); }
    void add_all() { fill(~std::uint64_t{0}); }

    // Adds the tiles of the pixels from x `left` to `right` of row y and of the rows beside it, as far as these are
    // inside.
    void add(int y, int left, int right) {
        const int first = tile_x(std::max(left, 1)), last = tile_x(std::min(right, end_x_ - 1));
        const std::uint64_t tiles = ~std::uint64_t{0} >> (tiles_a_row - 1 - (last - first)) << first;
        for (int row = tile_y(std::max(y - 1, 1)); row <= tile_y(std::min(y + 1, end_y_ - 1)); ++row)
            tiles_[static_cast<std::size_t>(row)] |= tiles;
    }

    // Calls work(from, end) for the pixels [from, end) of row y in each of its tiles, from the left.
    template <class Work>
    void for_each_run(int y, Work work) const {
        for (std::uint64_t tiles = tiles_[static_cast<std::size_t>(tile_y(y))]; tiles; tiles &= tiles - 1) {
            const std::int64_t from = 1 + (static_cast<std::int64_t>(std::countr_zero(tiles)) << tile_width_bits_);
            if (from >= end_x_) return;
            const std::int64_t end = std::min<std::int64_t>(from + (std::int64_t{1} << tile_width_bits_), end_x_);
            work(static_cast<int>(from), static_cast<int>(end));
        }
    }

 private:
    static constexpr int tiles_a_row = 64, tile_rows = 2048;

    void fill(std::uint64_t tiles) { std::fill_n(tiles_.begin(), tile_y(end_y_ - 1) + 1, tiles); }
    int tile_x(int x) const { return (x - 1) >> tile_width_bits_; }
    int tile_y(int y) const { return (y - 1) >> tile_height_bits_; }

    int end_x_, end_y_;
    int tile_width_bits_ = std::countr_zero(static_cast<unsigned>(chunk_size)), tile_height_bits_ = 0;
    std::array<std::uint64_t, tile_rows> tiles_;  // those below the image are never looked at
};

}  // namespace tool
