// Thinning. An iteration marks the edges of all lines, decides pixel by pixel which marks are kept, and removes the
// rest; iterations go on until one keeps nothing.
//
// Decisions see those made before them in the same iteration. Yet a row can be decided all at once: of its own row a
// pixel looks only to the right, where nothing is decided yet, and never to the left. So what has to be in order is
// rows, and pieces of a row from the left.
//
// Edges of the row below must be marked before a row is decided, since marks don't count as line. Removing may come at
// once, as decisions don't tell a mark from paper, and all marking around a row is done when it is decided. Thus one
// sweep makes an iteration, and what it touches is still in the cache.

#include "util/line_image.h"
#include "util/line_image_chunk.h"
#include "util/line_image_frontier.h"

namespace tool {
namespace {

constexpr std::uint8_t line = 255, paper = 0, kept = 50, marked = 100, edge = 200;

bool has(const std::uint8_t* row, std::uint8_t value) {
    Pixels found{};
    for (int x = 0; x < chunk_size; x += chunk_step) found |= where(load(row + x) == value);
    return any(found);
}

// Line with a neighbour that is paper or kept becomes edge.
void mark_edges(Chunk chunk) {
    std::uint8_t* const row = chunk.row;
    if (!has(row, line)) return;
    for (int x = 0; x < chunk_size; x += chunk_step) {
        Pixels open = where(load(row + x + 1) == paper) | where(load(row + x + 1) == kept);
        for (const std::uint8_t* const beside : {chunk.above() + x, chunk.below() + x}) {
            for (int dx = -1; dx <= 1; ++dx) {
                const Pixels neighbour = load(beside + dx);
                open |= where(neighbour == paper) | where(neighbour == kept);
            }
        }
        const Pixels before = load(row + x);
        store(where(before == line) & open ? all(edge) : before, row + x);
    }
}

// Of each pixel the neighbours that have a value. Kept: the one above counts twice.
struct Count {
    Pixels four, eight;
};

Count count(Chunk chunk, int x, std::uint8_t value) {
    const std::uint8_t *row = chunk.row, *above = chunk.above(), *below = chunk.below();
    const auto has_value = [value](const std::uint8_t* first) { return where(load(first) == value); };  // -1 or 0
    const Pixels up = has_value(above + x);
    const Pixels four = up + up + has_value(below + x) + has_value(row + x + 1);
    const Pixels slanted =
        has_value(above + x - 1) + has_value(above + x + 1) + has_value(below + x - 1) + has_value(below + x + 1);
    return {-four, -(four + slanted)};
}

// Edges become kept or paper, so that deciding again finds nothing to do. True when one is kept.
bool decide_edges(Chunk chunk) {
    Pixels any_kept{};
    for (int x = 0; x < chunk_size; x += chunk_step) {
        const Pixels lines = count(chunk, x, line).eight;
        const Count keeps = count(chunk, x, kept);
        const Pixels end_or_dot = where(lines == 0) & where(keeps.eight < 3);
        const Pixels joint = where(lines == 1) & where(keeps.eight == 1);
        const Pixels keep = end_or_dot | joint | where(keeps.four == 1);
        const Pixels before = load(chunk.row + x);
        const Pixels edges = where(before == edge);
        any_kept |= edges & keep;
        store(edges ? keep & kept : before, chunk.row + x);
    }
    return any(any_kept);
}

void convert_marks(Chunk chunk) {
    for (int x = 0; x < chunk_size; x += chunk_step) {
        const Pixels before = load(chunk.row + x);
        store(where(before == kept) | where(before == marked) ? all(line) : before, chunk.row + x);
    }
}

// True when a pixel was kept. `active` is where edges can be, `next` collects where the following iteration can have
// some: round every edge that was decided.
bool iterate(LineImage image, const Frontier& active, Frontier& next) {
    const auto mark = [&](int y) {
        active.for_each_run(y, [&](int from, int end) {
            for_each_chunk(image, y, from, end, [](Chunk chunk, int) { mark_edges(chunk); });
        });
    };
    const auto decide = [&](int y) {
        bool any_kept = false;
        active.for_each_run(y, [&](int from, int end) {
            for_each_chunk(image, y, from, end, [&](Chunk chunk, int x) {
                if (!has(chunk.row, edge)) return;
                const int reaches_left = chunk.row[0] == edge, reaches_right = chunk.row[chunk_size - 1] == edge;
                next.add(y, x - reaches_left, x + chunk_size - 1 + reaches_right);
                any_kept |= decide_edges(chunk);
            });
        });
        return any_kept;
    };
    bool any_kept = false;
    mark(1);
    for (int y = 1; y < image.height - 1; ++y) {
        if (y + 1 < image.height - 1) mark(y + 1);
        any_kept |= decide(y);
    }
    return any_kept;
}

}  // namespace

void thin_lines(LineImage image) {
    if (image.width < 3 || image.height < 3) return;
    Frontier frontiers[2] = {Frontier(image.width, image.height), Frontier(image.width, image.height)};
    Frontier *active = &frontiers[0], *next = &frontiers[1];
    active->add_all();
    while (iterate(image, *active, *next)) {
        std::swap(active, next);
        next->clear();
    }
    for (int y = 1; y < image.height - 1; ++y) for_each_chunk(image, y, [](Chunk chunk, int) { convert_marks(chunk); });
}

}  // namespace tool
