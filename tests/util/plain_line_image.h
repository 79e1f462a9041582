// Line-image morphology in its plain form, which the library's must equal byte for byte.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace plain {

using Pixels = std::vector<std::uint8_t>;

inline constexpr int neighbour_table[8][2] = {{0, -1}, {1, -1}, {0, 1}, {1, 1}, {1, 0}, {-1, 1}, {0, -1}, {-1, -1}};

class Image {
 public:
    Image(Pixels& pixels, int width, int height) : pixels_(pixels), width_(width), height_(height) {}

    void step(int from, int to, int connectivity) {
        for_each(from, [&](std::uint8_t& pixel, int x, int y) {
            if (count(x, y, to, connectivity == 4 ? 2 : 1, 1) > 0) pixel = 100;
        });
        convert(100, to);
    }

    void thin() {
        for (bool changed = true; std::exchange(changed, false);) {
            for_each(255, [&](std::uint8_t& pixel, int x, int y) {
                if (count(x, y, 0, 1, 1) + count(x, y, 50, 1, 1) > 0) pixel = 200;
            });
            for_each(200, [&](std::uint8_t& pixel, int x, int y) {
                const int fore = count(x, y, 255, 1, 2);
                if (fore == 0 && count(x, y, 50, 1, 3) < 3) pixel = 50;
                if (pixel != 50 && fore == 1 && count(x, y, 50, 1, 2) == 1) pixel = 50;
                if (pixel != 50 && count(x, y, 50, 2, 2) == 1) pixel = 50;
                changed |= pixel == 50;
            });
            convert(200, 0);
        }
        convert(100, 255);
        convert(50, 255);
    }

 private:
    template <class Visit>
    void for_each(int value, Visit visit) {
        if (height_ - 1 < 2) return;
        for (int y = 1; y <= height_ - 2; ++y)
            for (int x = 1; x <= width_ - 2; ++x)
                if (std::uint8_t& pixel = at(x, y); pixel == value) visit(pixel, x, y);
    }

    void convert(int from, int to) {
        for_each(from, [&](std::uint8_t& pixel, int, int) { pixel = static_cast<std::uint8_t>(to); });
    }

    int count(int x, int y, int value, int every, int stop) {
        int found = 0;
        for (int i = 0; i < 8 && found < stop; i += every)
            found += at(x + neighbour_table[i][0], y + neighbour_table[i][1]) == value;
        return found;
    }

    std::uint8_t& at(int x, int y) { return pixels_[static_cast<std::size_t>(y) * width_ + x]; }

    Pixels& pixels_;
    int width_, height_;
};

}  // namespace plain
