// Maps of the plane that keep straight lines straight.
#pragma once

#include <span>

#include "cases/case.h"

namespace cephtool {

// p goes to (xx * p.x + xy * p.y + x, yx * p.x + yy * p.y + y).
struct AffineMap {
    double xx = 1, xy = 0, yx = 0, yy = 1, x = 0, y = 0;

    Position operator()(Position p) const { return {xx * p.x + xy * p.y + x, yx * p.x + yy * p.y + y}; }
    double area_factor() const { return xx * yy - xy * yx; }
};

// The shift, turn and change of size that takes the sources to their targets with the least sum of squares. Sources
// that are all in one place are only shifted.
AffineMap similarity(std::span<const Position> sources, std::span<const Position> targets);

// The map that takes the three sources to their targets; they must not lie on one line.
AffineMap affine(std::span<const Position, 3> sources, std::span<const Position, 3> targets);

// How much longer the map can make one direction than another: 1 for a similarity, infinite when it flattens the plane.
double stretch(const AffineMap& map);

}  // namespace cephtool
