// Widening and narrowing: one function, as each is the other with line and paper exchanged.
#include <cstring>

#include "util/line_image.h"
#include "util/line_image_chunk.h"

namespace tool {
namespace {

constexpr std::uint8_t line = 255, paper = 0, marked = 100;

// Whichever of two pixels is nearer to `to`, the largest or the smallest value there is.
template <std::uint8_t to>
Pixels nearer(Pixels a, Pixels b) {
    return to == line ? (a > b ? a : b) : (a < b ? a : b);
}

// Marks what is to become `to`. A mark is neither line nor paper, so no mark leads to another, and marking twice is
// marking once. True when there are marks.
template <std::uint8_t to, Neighbours neighbours>
bool mark(Chunk chunk) {
    constexpr std::uint8_t from = to == line ? paper : line;
    std::uint8_t* const row = chunk.row;
    const std::uint8_t *above = chunk.above(), *below = chunk.below();
    Pixels marks{};
    for (int i = 0; i < chunk_size / chunk_step; ++i) {
        const int x = i * chunk_step;
        Pixels nearest = nearer<to>(nearer<to>(load(above + x), load(below + x)), load(row + x + 1));
        if constexpr (neighbours == Neighbours::eight) {
            nearest = nearer<to>(nearest, nearer<to>(load(above + x - 1), load(above + x + 1)));
            nearest = nearer<to>(nearest, nearer<to>(load(below + x - 1), load(below + x + 1)));
        }
        const Pixels before = load(row + x);
        const Pixels after = where(before == from) & where(nearest == to) ? all(marked) : before;
        marks |= where(after == marked);
        store(after, row + x);
    }
    return any(marks);
}

template <std::uint8_t to>
void convert_marks(Chunk chunk) {
    for (int x = 0; x < chunk_size; x += chunk_step) {
        const Pixels before = load(chunk.row + x);
        store(before == marked ? all(to) : before, chunk.row + x);
    }
}

// A row's marks are converted once the row below is marked, while both still lie in the cache.
template <std::uint8_t to, Neighbours neighbours>
void step(LineImage image) {
    bool marks_above = false;
    for (int y = 1; y < image.height; ++y) {
        bool marks = false;
        if (y < image.height - 1) {
            for_each_chunk(image, y, [&](Chunk chunk, int) { marks |= mark<to, neighbours>(chunk); });
        }
        if (marks_above) {
            for_each_chunk(image, y - 1, [](Chunk chunk, int) { convert_marks<to>(chunk); });
        }
        marks_above = marks;
    }
}

template <std::uint8_t to>
void step(LineImage image, Neighbours neighbours) {
    if (image.width < 3 || image.height < 3) return;
    if (neighbours == Neighbours::four) return step<to, Neighbours::four>(image);
    step<to, Neighbours::eight>(image);
}

}  // namespace

void widen_lines(LineImage image, Neighbours neighbours) {
    step<line>(image, neighbours);
}

void narrow_lines(LineImage image, Neighbours neighbours) {
    step<paper>(image, neighbours);
}

}  // namespace tool
