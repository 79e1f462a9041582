// Widening and narrowing in one sweep over the image, for vectors of any size. Everything here is local to the file
// that includes it, since one of them is compiled for newer processors and must share no function with the others.
#pragma once

#include <cstddef>
#include <cstdint>

#include "util/line_image.h"

namespace tool {

// The sweep by 32 pixels, for processors that have AVX2. At least 34 pixels wide and 3 high.
void widen_with_avx2(LineImage image, Neighbours neighbours);
void narrow_with_avx2(LineImage image, Neighbours neighbours);

namespace {

constexpr std::uint8_t line = 255, paper = 0, marked = 100;

// Pixels that are to become `to` are marked first. A mark is neither line nor paper, so no mark leads to another, and
// marking twice is marking once. Marks are converted as soon as the row below no longer looks at them.
template <int bytes, std::uint8_t to, Neighbours neighbours>
class Sweep {
 public:
    // At least bytes + 2 pixels wide and 3 high.
    static void over(LineImage image) {
        const std::ptrdiff_t width = image.width;
        std::uint8_t* row = image.pixels;
        for (int y = 1; y < image.height - 1; ++y) sweep(row += width, width, y > 1);
        for (std::ptrdiff_t x = 1; x < width - 1; ++x)
            if (row[x] == marked) row[x] = to;
    }

 private:
    static constexpr std::uint8_t from = to == line ? paper : line;

    // Operators work pixel by pixel; a comparison gives 255 for true and 0 for false.
    typedef std::uint8_t Pixels __attribute__((vector_size(bytes)));  // g++ does not take the size in a "using"
    typedef Pixels Anywhere __attribute__((aligned(1), may_alias));

    static Pixels load(const std::uint8_t* first) { return *reinterpret_cast<const Anywhere*>(first); }
    static void store(Pixels pixels, std::uint8_t* first) { *reinterpret_cast<Anywhere*>(first) = pixels; }
    static Pixels where(auto comparison) { return reinterpret_cast<Pixels>(comparison); }
    static Pixels all(unsigned value) { return Pixels{} + static_cast<std::uint8_t>(value); }

    // Whichever of two pixels is nearer to `to`, the largest or the smallest value there is.
    static Pixels nearer(Pixels a, Pixels b) { return to == line ? (a > b ? a : b) : (a < b ? a : b); }

    static void mark(std::uint8_t* row, std::ptrdiff_t width) {
        const std::uint8_t *above = row - width, *below = row + width;
        Pixels nearest = nearer(nearer(load(above), load(below)), load(row + 1));
        if constexpr (neighbours == Neighbours::eight) {
            nearest = nearer(nearest, nearer(load(above - 1), load(above + 1)));
            nearest = nearer(nearest, nearer(load(below - 1), load(below + 1)));
        }
        const Pixels before = load(row);
        store(before ^ (where(before == from) & where(nearest == to) & all(from ^ marked)), row);
    }

    static void convert_marks(std::uint8_t* row) {
        const Pixels before = load(row);
        store(before ^ (where(before == marked) & all(marked ^ to)), row);
    }

    // Marks the row, and converts the marks of the one above but in its outermost pixels. The row's last vector comes
    // first, while all of the row above is as it was; others may reach into it.
    static void sweep(std::uint8_t* row, std::ptrdiff_t width, bool converts) {
        const std::ptrdiff_t last = width - 1 - bytes;
        std::uint8_t* const above = row - width;
        const std::uint8_t outermost = above[0];
        mark(row + last, width);
        for (std::ptrdiff_t x = 1; x <= last; x += bytes) {
            mark(row + x, width);
            if (converts) convert_marks(above + x - 1);  // the next vector looks at what is behind that
        }
        if (!converts) return;
        convert_marks(above + last);
        above[0] = outermost;
    }
};

template <int bytes, std::uint8_t to>
void sweep(LineImage image, Neighbours neighbours) {
    if (neighbours == Neighbours::four) return Sweep<bytes, to, Neighbours::four>::over(image);
    Sweep<bytes, to, Neighbours::eight>::over(image);
}

}  // namespace
}  // namespace tool
