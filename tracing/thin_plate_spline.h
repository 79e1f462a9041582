// The thin-plate spline: the map of the plane that takes given points to given others and bends as little as possible.
// Bookstein, IEEE Trans Pattern Anal Mach Intell 1989;11:567-585; smoothing after Wahba, Spline Models for
// Observational Data, SIAM 1990, section 2.4.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "cases/case.h"

namespace cephtool {

class ThinPlateSpline {
 public:
    // With smoothing 0 every source comes to its target. The larger it is, the less the map bends and the more it
    // misses them; `stiff` gives the affine map of least squares. Nothing for fewer than three points, points on one
    // line, or a source that stands there twice.
    static std::optional<ThinPlateSpline> through(std::span<const Position> sources, std::span<const Position> targets,
                                                  double smoothing);
    static constexpr double stiff = 1e6;

    Position operator()(Position p) const;
    // By how much the map enlarges areas at p; negative where it has turned the plane over, so that curves fold.
    double area_factor(Position p) const;

 private:
    struct Weight {
        Position at, bend;  // a source and what it contributes to x and y
    };
    Position in_units(Position p) const;

    std::vector<Weight> weights_;
    Position constant_, along_x_, along_y_;
    Position middle_;
};

}  // namespace cephtool
