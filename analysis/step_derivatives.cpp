// The derivatives of each kind of step, and whether what it gives is at a border.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "analysis/program_gradient.h"
#include "analysis/program_step.h"
#include "platform/arithmetic.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr double degrees_a_radian = 180.0 / std::numbers::pi;
constexpr double reach = 2;  // standard errors within which a border counts

Vec2 left_of(Vec2 v) {
    return {v.y, -v.x};
}
// The derivative, in degrees, of the direction of v as seen on the screen, counter-clockwise.
Vec2 turn(Vec2 v) {
    return degrees_a_radian / dot(v, v) * left_of(v);
}
// The derivative of v / |v|.
Matrix unit_by(Vec2 v) {
    const double size = length(v);
    return (1 / size) * (identity - outer(v / size, v / size));
}

}  // namespace

void ProgramGradient::compute(StepId id) {
    const Step& step = program_.steps[id];
    at_border_[id] = false;
    if (is_landmark(step)) {
        slopes_[first_[id]] = identity;
        return;
    }
    closed_[id] = false;
    std::ranges::fill(slopes_of(id), Slope());
    if (first_[id] == first_[id + 1]) return;
    switch (step.kind) {
        case Step::Kind::construction: return compute_construction(id);
        case Step::Kind::incisor_lean: {
            const Vec2 line = turn(at(step.in[1]) - at(step.in[0]));
            const Vec2 incisor = turn(at(step.in[3]) - at(step.in[2]));
            add_slope(id, step.in[0], line);
            add_slope(id, step.in[1], -1 * line);
            add_slope(id, step.in[2], -1 * incisor);
            return add_slope(id, step.in[3], incisor);
        }
        case Step::Kind::effective_a: {
            // U1C + left_of(unit(A - N)) (12 - lean) 0.4 mm
            const Vec2 way = at(step.in[1]) - at(step.in[0]);
            const double mm_a_degree = -0.4 / scale_, far = (at(step.in[3]).x - 12) * mm_a_degree;
            const Matrix by = far * (Matrix{{0, 1}, {-1, 0}} * unit_by(way));
            add_point(id, step.in[0], -1 * by);
            add_point(id, step.in[1], by);
            add_point(id, step.in[2], identity);
            const Vec2 side = mm_a_degree * left_of(way / length(way));
            return add(id, step.in[3], [&](Slope& sum, const Slope& lean) {
                sum.x = sum.x + side.x * lean.x;
                sum.y = sum.y + side.y * lean.x;
            });
        }
        case Step::Kind::measure: return compute_measure(id);
        case Step::Kind::operation: return compute_operation(id);
        case Step::Kind::first_not_zero:
            // The place of the first number that is not between -1 and 1.
            for (StepId i = 0; i < step.in[1]; ++i) {
                const StepId number = program_.lists[step.in[0] + i];
                if (turns_within(number, at(number).x < 0 ? -1 : 1)) at_border_[id] = true;
                add(id, number, [](Slope&, const Slope&) {});
                if (truncated(at(number).x) != 0) return;
            }
            return;
        case Step::Kind::unjudged:
        case Step::Kind::item:
        case Step::Kind::norm: return each_used(id, [&](StepId from) { add_number(id, from, 1); });
        case Step::Kind::choice: return compute_choice(id);
        case Step::Kind::deviation: {
            const double sd = at(step.in[2]).x;
            if (sd == 0) return;
            add_number(id, step.in[0], 1 / sd);
            add_number(id, step.in[1], -1 / sd);
            return add_number(id, step.in[2], (at(step.in[1]).x - at(step.in[0]).x) / (sd * sd));
        }
        default: return;
    }
}

void ProgramGradient::compute_construction(StepId id) {
    const Step& step = program_.steps[id];
    const auto p = [&](std::size_t i) { return at(step.in[i]); };
    const auto move = [&](std::size_t i, const Matrix& by) { add_point(id, step.in[i], by); };
    switch (static_cast<Construction>(step.what)) {
        case Construction::middle: move(0, 0.5 * identity); return move(1, 0.5 * identity);
        case Construction::foot: {
            // p1 + t (p2 - p1), where the line is at right angles to the way from p0
            const Vec2 d = p(2) - p(1), w = p(0) - p(1);
            const double dd = dot(d, d), t = dot(w, d) / dd;
            move(0, (1 / dd) * outer(d, d));
            move(1, (1 - t) * identity + (1 / dd) * outer(d, (2 * t - 1) * d - w));
            return move(2, t * identity + (1 / dd) * outer(d, w - 2 * t * d));
        }
        case Construction::crossing: {
            // Moving an end of one line moves the crossing along the other.
            const Vec2 u = p(1) - p(0), v = p(3) - p(2), w = p(2) - p(0);
            const double s = cross(w, v) / cross(u, v), r = cross(w, u) / cross(u, v);
            const Matrix along_v = (1 / dot(left_of(u), v)) * outer(v, left_of(u));
            const Matrix along_u = (1 / dot(left_of(v), u)) * outer(u, left_of(v));
            move(0, (1 - s) * along_v);
            move(1, s * along_v);
            move(2, (1 - r) * along_u);
            return move(3, r * along_u);
        }
        case Construction::bisector: {
            // p0 + pixels unit(unit(p1 - p0) + unit(p2 - p0))
            const Vec2 u = p(1) - p(0), v = p(2) - p(0);
            const Vec2 middle = u / length(u) + v / length(v);
            if (length(middle) < one_place_px) at_border_[id] = true;
            const Matrix by = step.number * pixel_ * unit_by(middle);
            const Matrix by_u = by * unit_by(u), by_v = by * unit_by(v);
            move(0, identity - by_u - by_v);
            move(1, by_u);
            return move(2, by_v);
        }
        case Construction::extension: {
            const Matrix by = step.number / scale_ * unit_by(p(1) - p(0));
            move(0, -1 * by);
            return move(1, identity + by);
        }
        case Construction::effective_a: return;
    }
}

void ProgramGradient::compute_measure(StepId id) {
    const Step& step = program_.steps[id];
    const auto p = [&](std::size_t i) { return at(step.in[i]); };
    const auto measure = static_cast<Measure>(step.what);
    switch (measure) {
        case Measure::length:
        case Measure::length_right:
        case Measure::length_down: return compute_length(id, measure);
        case Measure::angle1: {
            const Vec2 u = p(0) - p(1), v = p(2) - p(1);
            const double side = cross(u, v) < 0 ? 1 : -1;  // the angle grows as v turns away from u
            const Vec2 by_u = -side * turn(u), by_v = side * turn(v);
            add_slope(id, step.in[0], by_u);
            add_slope(id, step.in[1], -1 * (by_u + by_v));
            return add_slope(id, step.in[2], by_v);
        }
        case Measure::angle2: {
            const Vec2 by_u = -1 * turn(p(1) - p(0)), by_v = turn(p(3) - p(2));
            add_slope(id, step.in[0], -1 * by_u);
            add_slope(id, step.in[1], by_u);
            add_slope(id, step.in[2], -1 * by_v);
            add_slope(id, step.in[3], by_v);
            // Not told by the value, which is 0 for lines that point opposite ways (signed_angle).
            const Vec2 u = p(1) - p(0), v = p(3) - p(2);
            if (dot(u, v) >= 0) return;
            const double to_jump = degrees_a_radian * atan(std::abs(cross(u, v)) / -dot(u, v));
            if (to_jump <= reach * std::sqrt(moments(id).xx)) at_border_[id] = true;
            return;
        }
        default: return;
    }
}

void ProgramGradient::compute_length(StepId id, Measure measure) {
    const Step& step = program_.steps[id];
    const Vec2 way = at(step.in[1]) - at(step.in[0]);
    const double size = length(way);
    add_point(id, step.in[0], -1 * identity);
    add_point(id, step.in[1], identity);
    Vec2 unit = size > 0 ? way / size : Vec2(1, 0);
    double sign = 1;
    if (measure == Measure::length_right && way.x < 0) sign = -1;
    if (measure == Measure::length_down && way.y < 0) sign = -1;
    const double to_turn = measure == Measure::length_right ? way.x : measure == Measure::length_down ? way.y : size;
    if (std::abs(to_turn) <= near_) {
        const Moments m = moments(id);
        if (size <= one_place_px) {
            // The ends can part along the longer axis of their spread.
            const double half = (m.xx - m.yy) / 2, root = std::sqrt(half * half + m.xy * m.xy),
                         middle = (m.xx + m.yy) / 2;
            const Vec2 axis = half >= 0 ? Vec2(root + half, m.xy) : Vec2(m.xy, root - half);
            unit = root > 0 ? axis / length(axis) : Vec2(1, 0);
            if (middle - root > 1e-6 * (middle + root)) at_border_[id] = true;
        } else {
            const auto variance = [&](Vec2 e) { return e.x * e.x * m.xx + 2 * e.x * e.y * m.xy + e.y * e.y * m.yy; };
            const double along = std::sqrt(std::max(variance(unit), 0.0)), aside = variance(left_of(unit));
            // Ends that may well lie the other way round.
            if (aside > size * size / 4) at_border_[id] = true;
            if (measure != Measure::length) {
                const double spread = measure == Measure::length_right ? m.xx : m.yy;
                const double other = measure == Measure::length_right ? way.y : way.x;
                const double left = spread > 0 ? std::abs(other - m.xy / spread * to_turn) : 0;
                if (std::abs(to_turn) <= reach * std::sqrt(spread) && 2 * left > along) at_border_[id] = true;
            }
        }
    }
    const Vec2 by = sign * scale_ * unit;
    for (Slope& slope : slopes_of(id)) slope = {by.x * slope.x + by.y * slope.y, {}};
}

// Whether the number comes to `border` within the errors.
bool ProgramGradient::turns_within(StepId number, double border) const {
    const double variance = moments(number).xx;
    return variance > 0 && std::abs(at(number).x - border) <= reach * std::sqrt(variance);
}

void ProgramGradient::compute_operation(StepId id) {
    const Step& step = program_.steps[id];
    const StepId left = step.in[0], right = step.in[1];
    switch (static_cast<Operation>(step.what)) {
        case Operation::times: return compute_product(id, left, right);
        case Operation::over:
            if (turns_within(right, 0)) at_border_[id] = true;
            add_number(id, left, 1 / at(right).x);
            return add_number(id, right, -at(left).x / (at(right).x * at(right).x));
        case Operation::plus: add_number(id, left, 1); return add_number(id, right, 1);
        case Operation::minus: add_number(id, left, 1); return add_number(id, right, -1);
        default:
            add_number(id, left, 1);
            add_number(id, right, -1);
            const double variance = moments(id).xx;
            if (variance > 0 && std::abs(at(left).x - at(right).x) <= reach * std::sqrt(variance))
                at_border_[id] = true;
            std::ranges::fill(slopes_of(id), Slope());
    }
}

// Whether the value jumps where the comparison turns, by what the two ways of going on give there: their difference,
// `more` less `less`, less what it owes to the numbers compared not being equal. `id` rests on all of them.
bool ProgramGradient::jumps(StepId id, StepId comparison, StepId more, StepId less) {
    const Step& compared = program_.steps[comparison];
    if (at_border_[compared.in[0]] || at_border_[compared.in[1]]) return true;
    const char border = at_border_[id];
    std::ranges::fill(slopes_of(id), Slope());
    add_number(id, more, 1);
    add_number(id, less, -1);
    const auto add_y = [&](StepId from, double by) {
        add(id, from, [&](Slope& sum, const Slope& term) { sum.y = sum.y + by * term.x; });
    };
    add_y(compared.in[0], 1);
    add_y(compared.in[1], -1);
    const Moments m = moments(id);
    const double to_turn = at(compared.in[0]).x - at(compared.in[1]).x;
    const double jump = at(more).x - at(less).x - m.xy / m.yy * to_turn;
    std::ranges::fill(slopes_of(id), Slope());
    at_border_[id] = border;
    return std::abs(jump) > std::sqrt(m.xx);
}

// The factor of a comparison that may turn, such as of one that gives a length its sign, is not at a border when it is
// near 0 there.
void ProgramGradient::compute_product(StepId id, StepId left, StepId right) {
    bool border = at_border_[left] || at_border_[right];
    for (const auto& [comparison, factor] : {std::pair(left, right), std::pair(right, left)})
        if (at_border_[comparison] && is_comparison(program_.steps[comparison]) && !at_border_[factor])
            border = jumps(id, comparison, factor, 0);
    add_number(id, left, at(right).x);
    add_number(id, right, at(left).x);
    at_border_[id] = border;
}

void ProgramGradient::compute_choice(StepId id) {
    const Step& step = program_.steps[id];
    const StepId selector = step.in[0], chosen = run_.chosen(step);
    const auto alternative = [&](StepId place) { return program_.lists[step.in[1] + place]; };
    bool border = at_border_[selector];
    if (!is_comparison(program_.steps[selector])) {
        const double number = at(selector).x;
        border = border || turns_within(selector, std::floor(number)) || turns_within(selector, std::ceil(number));
    } else if (border && step.in[2] == 2 && !program_.by_norm[id]) {
        border = jumps(id, selector, alternative(1), alternative(0));
    }
    if (chosen != 0) add_number(id, chosen, 1);
    at_border_[id] = border || at_border_[chosen];
    closed_[id] = closed_[selector] || closed_[chosen];
}

}  // namespace tool
