// Which sorts of steps there are, and what constructions and measures of points come to.
#pragma once

#include <array>

#include "analysis/arithmetic.h"
#include "analysis/program.h"

namespace tool {

inline bool is_landmark(const Step& step) {
    return step.kind == Step::Kind::landmark || step.kind == Step::Kind::named;
}
inline bool is_comparison(const Step& step) {
    return step.kind == Step::Kind::operation && static_cast<Operation>(step.what) >= Operation::less;
}
// Those that `geometric` computes.
inline bool is_geometric(const Step& step) {
    return step.kind == Step::Kind::construction || step.kind == Step::Kind::incisor_lean ||
           step.kind == Step::Kind::effective_a || step.kind == Step::Kind::measure;
}

// `in` are the values of what the step takes; numbers are the x of theirs, as is a result. `scale` is mm a step of the
// coordinates, `pixel` the steps of a pixel.
Vec2 geometric(const Step& step, const std::array<Vec2, 4>& in, double scale, double pixel);

// Where the readers of text would look for a degeneracy (PointReader, read_measure), and at equal points that have one
// name, too.
bool may_be_undefined(const Program& program, const Step& step, const std::array<Vec2, 4>& in);

}  // namespace tool
