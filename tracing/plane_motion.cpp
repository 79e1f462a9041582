#include "tracing/plane_motion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cephtool {
namespace {

Position middle(std::span<const Position> points) {
    Position sum;
    for (const Position& p : points) sum = {sum.x + p.x, sum.y + p.y};
    const double count = static_cast<double>(std::max<std::size_t>(points.size(), 1));
    return {sum.x / count, sum.y / count};
}

// With `map` for directions, `from` comes to `to`.
AffineMap pinned(AffineMap map, Position from, Position to) {
    map.x = map.y = 0;
    const Position turned = map(from);
    map.x = to.x - turned.x;
    map.y = to.y - turned.y;
    return map;
}

}  // namespace

// With points as complex numbers about their middles, z -> w: the factor sum(conj(z) w) / sum(|z|^2).
AffineMap similarity(std::span<const Position> sources, std::span<const Position> targets) {
    const Position from = middle(sources), to = middle(targets);
    double real = 0, imaginary = 0, squares = 0;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const Position z{sources[i].x - from.x, sources[i].y - from.y};
        const Position w{targets[i].x - to.x, targets[i].y - to.y};
        real += z.x * w.x + z.y * w.y;
        imaginary += z.x * w.y - z.y * w.x;
        squares += z.x * z.x + z.y * z.y;
    }
    AffineMap map;
    if (squares > 0) map = {real / squares, -imaginary / squares, imaginary / squares, real / squares, 0, 0};
    return pinned(map, from, to);
}

AffineMap affine(std::span<const Position, 3> sources, std::span<const Position, 3> targets) {
    const auto side = [](std::span<const Position, 3> corners, std::size_t i) {
        return Position{corners[i].x - corners[0].x, corners[i].y - corners[0].y};
    };
    const Position a = side(sources, 1), b = side(sources, 2), to_a = side(targets, 1), to_b = side(targets, 2);
    const double area = a.x * b.y - a.y * b.x;
    const AffineMap map{(to_a.x * b.y - to_b.x * a.y) / area,
                        (to_b.x * a.x - to_a.x * b.x) / area,
                        (to_a.y * b.y - to_b.y * a.y) / area,
                        (to_b.y * a.x - to_a.y * b.x) / area,
                        0,
                        0};
    return pinned(map, sources[0], targets[0]);
}

// The ratio of the singular values: their squares are half of sum +- root of the difference.
double stretch(const AffineMap& map) {
    const double sum = map.xx * map.xx + map.xy * map.xy + map.yx * map.yx + map.yy * map.yy;
    const double product = std::abs(map.area_factor());
    const double root = std::sqrt(std::max(0.0, sum * sum - 4 * product * product));
    return product > 0 ? (sum + root) / (2 * product) : std::numeric_limits<double>::infinity();
}

}  // namespace cephtool
