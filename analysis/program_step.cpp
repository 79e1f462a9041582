#include "analysis/program_step.h"

namespace tool {

Vec2 geometric(const Step& step, const std::array<Vec2, 4>& in, double scale, double pixel) {
    switch (step.kind) {
        case Step::Kind::construction:
            return constructed(static_cast<Construction>(step.what), in, step.number, scale, pixel);
        case Step::Kind::incisor_lean: return {incisor_lean(in[0], in[1], {in[2], in[3]}), 0};
        case Step::Kind::effective_a: return effective_a(in[0], in[1], in[2], in[3].x, scale);
        default: return {measured(static_cast<Measure>(step.what), in, scale), 0};
    }
}

bool may_be_undefined(const Program& program, const Step& step, const std::array<Vec2, 4>& in) {
    const auto one_place = [&](std::size_t i, std::size_t j) { return at_one_place(in[i], in[j]); };
    const auto is_given = [&](std::size_t i) {
        const Step& taken = program.steps[step.in[i]];
        return is_landmark(taken) || taken.kind == Step::Kind::number;
    };
    if (step.kind == Step::Kind::incisor_lean) return one_place(0, 1) || one_place(2, 3);
    if (step.kind == Step::Kind::measure) switch (static_cast<Measure>(step.what)) {
            case Measure::length:
            case Measure::length_right:
            case Measure::length_down: return is_given(0) && is_given(1) && one_place(0, 1);
            case Measure::angle1: return one_place(0, 1) || one_place(2, 1);
            default: return one_place(0, 1) || one_place(2, 3);
        }
    if (step.kind == Step::Kind::construction) switch (static_cast<Construction>(step.what)) {
            case Construction::foot: return one_place(1, 2);
            case Construction::crossing: return one_place(0, 1) || one_place(2, 3) || parallel(in);
            case Construction::bisector: return one_place(0, 1) || one_place(0, 2);
            case Construction::extension: return one_place(0, 1);
            default: return false;
        }
    return false;
}

}  // namespace tool
