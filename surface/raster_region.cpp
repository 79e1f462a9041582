#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "surface/raster.h"

namespace tool {

namespace {

struct Edge {
    std::int64_t top, bottom;  // rows, bottom exclusive
    std::int64_t x, dx, dy;    // x at the top, and the way to the other end
    int winding;

    // The first whole column not left of the edge in a row. Both factors have 32 bits.
    std::int64_t column(std::int64_t y) const {
        const auto product = static_cast<std::uint64_t>(y - top) * static_cast<std::uint64_t>(std::abs(dx));
        const auto height = static_cast<std::uint64_t>(dy);
        const auto quotient = static_cast<std::int64_t>(product / height);
        return dx < 0 ? x - quotient : x + quotient + (product % height ? 1 : 0);
    }
};

struct Crossing {
    std::int64_t x;
    int winding;
};

std::vector<Edge> edges_of(std::span<const POINT> points) {
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < points.size(); ++i) {
        POINT a = points[i], b = points[(i + 1) % points.size()];
        if (a.y == b.y) continue;
        const int winding = a.y < b.y ? 1 : -1;
        if (winding < 0) std::swap(a, b);
        edges.push_back({a.y, b.y, a.x, std::int64_t{b.x} - a.x, std::int64_t{b.y} - a.y, winding});
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.top < b.top; });
    return edges;
}

}  // namespace

void Raster::region(std::span<const POINT> points, int fill_mode, Ink ink) {
    const std::vector<Edge> edges = edges_of(points);
    std::vector<const Edge*> active;
    std::vector<Crossing> crossings;
    std::size_t next = 0;
    for (std::int64_t y = edges.empty() ? height_ : std::max<std::int64_t>(edges.front().top, 0); y < height_; ++y) {
        for (; next < edges.size() && edges[next].top <= y; ++next) active.push_back(&edges[next]);
        std::erase_if(active, [y](const Edge* edge) { return edge->bottom <= y; });
        if (active.empty() && next == edges.size()) return;
        crossings.clear();
        for (const Edge* edge : active) crossings.push_back({edge->column(y), edge->winding});
        std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
        int inside = 0;
        for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
            inside += fill_mode == WINDING ? crossings[i].winding : 1;
            if (fill_mode == WINDING ? inside != 0 : inside % 2 != 0) row(y, crossings[i].x, crossings[i + 1].x, ink);
        }
    }
}

}  // namespace tool
