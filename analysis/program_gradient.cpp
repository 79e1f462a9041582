#include "analysis/program_gradient.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "analysis/landmark_names.h"
#include "platform/arithmetic.h"
#include "platform/code_page.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr double degrees_a_radian = 180.0 / std::numbers::pi;
constexpr double reach = 2;                                // standard errors within which a border counts
constexpr std::size_t most_slopes = std::size_t{1} << 20;  // of all steps together, 32 MiB; no analysis comes near

double cross(Vec2 u, Vec2 v) {
    return u.x * v.y - u.y * v.x;
}
Vec2 scaled(Vec2 v, double k) {
    return {v.x * k, v.y * k};
}
Vec2 left_of(Vec2 v) {
    return {v.y, -v.x};
}
// The derivative, in degrees, of the direction of v as seen on the screen, counter-clockwise.
Vec2 turn(Vec2 v) {
    return scaled(left_of(v), degrees_a_radian / dot(v, v));
}

// 2 x 2, by rows.
struct Matrix {
    Vec2 x{1, 0}, y{0, 1};
};
Matrix operator*(double k, const Matrix& m) {
    return {scaled(m.x, k), scaled(m.y, k)};
}
Matrix operator+(const Matrix& m, const Matrix& n) {
    return {m.x + n.x, m.y + n.y};
}
Matrix operator-(const Matrix& m, const Matrix& n) {
    return {m.x - n.x, m.y - n.y};
}
Matrix operator*(const Matrix& m, const Matrix& n) {
    const auto row = [&](Vec2 r) { return scaled(n.x, r.x) + scaled(n.y, r.y); };
    return {row(m.x), row(m.y)};
}
Matrix outer(Vec2 column, Vec2 row) {
    return {scaled(row, column.x), scaled(row, column.y)};
}
// The derivative of v / |v|.
Matrix unit_by(Vec2 v) {
    const double size = length(v);
    return (1 / size) * (Matrix() - outer(v / size, v / size));
}

bool compares(const Step& step) {
    return step.kind == Step::Kind::operation && static_cast<Operation>(step.what) >= Operation::less;
}

Vec2 turned(Vec2 v, double degrees) {  // clockwise on the screen
    const double c = cos(degrees / degrees_a_radian), s = sin(degrees / degrees_a_radian);
    return {v.x * c - v.y * s, v.x * s + v.y * c};
}

}  // namespace

ErrorFrame error_frame(const Landmarks& landmarks) {
    if (!is_lateral(landmarks.kind())) return {};
    const auto place = [&](std::string_view name) { return landmarks.position(landmarks.find(name)); };
    const auto placed = [&](Vec2 p, Vec2 q) { return p != Vec2() && q != Vec2() && !at_one_place(p, q); };
    const auto frame = [](ErrorAxes axes, Vec2 way) {
        const Vec2 along = way / length(way);
        return ErrorFrame{axes, along, left_of(along)};
    };
    const Vec2 po = place("Po"), orbitale = place("Or"), s = place("S"), n = place("N");
    if (placed(po, orbitale)) return frame(ErrorAxes::frankfort, orbitale - po);
    // Frankfort is taken to fall forward by 7 degrees from S-N (Burstone et al., J Oral Surg 1978;36:269).
    constexpr double frankfort_to_sn = 7;
    if (placed(s, n))
        return frame(ErrorAxes::sella_nasion, turned(n - s, n.x < s.x ? -frankfort_to_sn : frankfort_to_sn));
    return {};
}

ProgramGradient::ProgramGradient(const Program& program, const ProgramRun& run) : program_(program), run_(run) {
    lay_out();
    set_errors(LandmarkErrors());
}

// Which landmarks each step rests on.
void ProgramGradient::lay_out() {
    const std::size_t count = program_.steps.size();
    std::vector<std::vector<std::uint32_t>> leaves(count);
    enum : char { unseen, open, met };
    std::vector<char> states(count, unseen);
    opaque_.resize(count);
    std::size_t all = 0;
    const auto each_input = [&](StepId id, const auto& visit) {
        const Step& step = program_.steps[id];
        program_.each_input(step, visit);
        if (step.kind == Step::Kind::norm) program_.each_formula(step, visit);
    };
    const auto leave = [&](StepId id) {
        const Step::Kind kind = program_.steps[id].kind;
        std::vector<std::uint32_t>& own = leaves[id];
        if (kind == Step::Kind::cast_measure) opaque_[id] = true;
        if (kind == Step::Kind::landmark || kind == Step::Kind::named) {
            own.push_back(static_cast<std::uint32_t>(landmarks_.size()));
            landmarks_.push_back(id);
        }
        each_input(id, [&](StepId input) {
            if (states[input] == open || opaque_[input]) opaque_[id] = true;  // circles are the text's
            own.insert(own.end(), leaves[input].begin(), leaves[input].end());
        });
        std::ranges::sort(own);
        own.erase(std::unique(own.begin(), own.end()), own.end());
        if (all + own.size() > most_slopes) own.clear(), opaque_[id] = true;
        all += own.size();
    };
    std::vector<StepId> wanted;
    for (std::size_t root = 0; root < count; ++root) {
        wanted.push_back(static_cast<StepId>(root));
        while (!wanted.empty()) {
            const StepId id = wanted.back();
            if (states[id] == unseen) {
                states[id] = open;
                each_input(id, [&](StepId input) {
                    if (states[input] == unseen) wanted.push_back(input);
                });
                continue;
            }
            wanted.pop_back();
            if (states[id] == met) continue;
            leave(id);
            states[id] = met;
        }
    }
    first_.reserve(count + 1);
    leaves_.reserve(all);
    for (const auto& own : leaves) {
        first_.push_back(leaves_.size());
        leaves_.insert(leaves_.end(), own.begin(), own.end());
    }
    first_.push_back(leaves_.size());
    slopes_.resize(leaves_.size());
    closed_.resize(count);
    at_border_.resize(count);
    done_.resize(count);
}

std::string_view ProgramGradient::name(StepId landmark) const {
    const Step& step = program_.steps[landmark];
    if (step.kind == Step::Kind::named) return program_.names[step.in[0]];
    const auto names = landmark_names(program_.kind);
    return step.in[0] < names.size() ? names[step.in[0]] : std::string_view();
}

void ProgramGradient::set_errors(const LandmarkErrors& errors) {
    errors_ = errors;
    figures_.clear();
    for (const StepId id : landmarks_)
        figures_.push_back(errors_.find(utf8_from_code_page(name(id)), is_frontal(program_.kind)));
    record_since_ = norms_since_ = ++now_;
}

void ProgramGradient::begin(const Landmarks& landmarks) {
    record_since_ = norms_since_ = ++now_;
    scale_ = landmarks.scale();
    pixel_ = landmarks.steps();
    const ErrorFrame frame = error_frame(landmarks);
    near_ = 0;
    spreads_.resize(landmarks_.size());
    for (std::size_t i = 0; i < landmarks_.size(); ++i) {
        const StepId id = landmarks_[i];
        const Step& step = program_.steps[id];
        const bool made = step.kind == Step::Kind::named &&
                          landmarks.find(program_.names[step.in[0]]).source == Landmarks::Source::virtually;
        closed_[id] = made;
        Spread& spread = spreads_[i] = {};
        const LandmarkError* const figure = figures_[i];
        if (!figure || !(scale_ > 0)) continue;
        spread = {true, figure->assumed, scaled(frame.along, figure->along_mm / scale_),
                  scaled(frame.across, figure->across_mm / scale_)};
        near_ = std::max({near_, figure->along_mm / scale_, figure->across_mm / scale_});
    }
    near_ *= 10;
}

void ProgramGradient::follow(int sex, int band) {
    if (sex == sex_ && band == band_) return;
    sex_ = sex, band_ = band;
    norms_since_ = ++now_;
}

// What the step took when its value was made; of a choice that rests on no norm all that it chooses from, which have
// values then.
template <class Visit>
void ProgramGradient::each_used(StepId id, const Visit& visit) const {
    const Step& step = program_.steps[id];
    if (step.kind == Step::Kind::norm) {
        const StepId formula = run_.norm_formula_of(static_cast<int>(step.in[0]));
        if (formula != no_step) visit(formula);
    } else if (step.kind == Step::Kind::choice && program_.by_norm[id]) {
        visit(step.in[0]);
        visit(run_.chosen(step));
    } else {
        program_.each_input(step, visit);
    }
}

void ProgramGradient::derive(StepId root) {
    if (done(root)) return;
    wanted_.assign(1, root);
    while (!wanted_.empty()) {
        const StepId id = wanted_.back();
        const std::size_t before = wanted_.size();
        if (!done(id)) {
            each_used(id, [&](StepId input) {
                if (!done(input)) wanted_.push_back(input);
            });
            if (wanted_.size() > before) continue;
            compute(id);
            done_[id] = now_;
        }
        wanted_.pop_back();
    }
}

// Calls add(sum, term) for each landmark of `from`, which are all among those of `to`.
template <class Add>
void ProgramGradient::add(StepId to, StepId from, const Add& add) {
    const auto sums = leaves_of(to), terms = leaves_of(from);
    Slope* const sum = slopes_.data() + first_[to];
    const Slope* const term = slopes_.data() + first_[from];
    std::size_t at = 0;
    for (std::size_t i = 0; i < terms.size(); ++i) {
        while (sums[at] != terms[i]) ++at;
        add(sum[at], term[i]);
    }
    at_border_[to] |= at_border_[from];
    closed_[to] |= closed_[from];
}

void ProgramGradient::add_point(StepId to, StepId from, const Jacobian& by) {
    add(to, from, [&](Slope& sum, const Slope& term) {
        sum.x = sum.x + scaled(term.x, by.x.x) + scaled(term.y, by.x.y);
        sum.y = sum.y + scaled(term.x, by.y.x) + scaled(term.y, by.y.y);
    });
}

void ProgramGradient::add_slope(StepId to, StepId from, Vec2 by) {
    add(to, from, [&](Slope& sum, const Slope& term) { sum.x = sum.x + scaled(term.x, by.x) + scaled(term.y, by.y); });
}

void ProgramGradient::add_number(StepId to, StepId from, double by) {
    add(to, from, [&](Slope& sum, const Slope& term) { sum.x = sum.x + scaled(term.x, by); });
}

// Variances and covariance of a step's x and y.
ProgramGradient::Moments ProgramGradient::moments(StepId id) const {
    Moments all;
    for (std::size_t i = first_[id]; i < first_[id + 1]; ++i) {
        const Spread& spread = spreads_[leaves_[i]];
        const Slope& slope = slopes_[i];
        for (const Vec2 way : {spread.along, spread.across}) {
            const double x = dot(slope.x, way), y = dot(slope.y, way);
            all.xx += x * x, all.xy += x * y, all.yy += y * y;
        }
    }
    return all;
}

void ProgramGradient::compute(StepId id) {
    const Step& step = program_.steps[id];
    const bool is_landmark = step.kind == Step::Kind::landmark || step.kind == Step::Kind::named;
    at_border_[id] = false;
    if (is_landmark) {
        slopes_[first_[id]] = {{1, 0}, {0, 1}};
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
            add_slope(id, step.in[1], scaled(line, -1));
            add_slope(id, step.in[2], scaled(incisor, -1));
            return add_slope(id, step.in[3], incisor);
        }
        case Step::Kind::effective_a: {
            // U1C + left_of(unit(A - N)) (12 - lean) 0.4 mm
            const Vec2 way = at(step.in[1]) - at(step.in[0]);
            const double mm_a_degree = -0.4 / scale_, far = (at(step.in[3]).x - 12) * mm_a_degree;
            const Matrix by = far * (Matrix{{0, 1}, {-1, 0}} * unit_by(way));
            add_point(id, step.in[0], {scaled(by.x, -1), scaled(by.y, -1)});
            add_point(id, step.in[1], {by.x, by.y});
            add_point(id, step.in[2], {{1, 0}, {0, 1}});
            const Vec2 side = scaled(left_of(way / length(way)), mm_a_degree);
            return add(id, step.in[3], [&](Slope& sum, const Slope& lean) {
                sum.x = sum.x + scaled(lean.x, side.x);
                sum.y = sum.y + scaled(lean.x, side.y);
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
        case Step::Kind::item: return each_used(id, [&](StepId from) { add_number(id, from, 1); });
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
    const auto move = [&](std::size_t i, const Matrix& by) { add_point(id, step.in[i], {by.x, by.y}); };
    const Matrix same;
    switch (static_cast<Construction>(step.what)) {
        case Construction::middle: move(0, 0.5 * same); return move(1, 0.5 * same);
        case Construction::foot: {
            // p1 + t (p2 - p1), where the line is at right angles to the way from p0
            const Vec2 d = p(2) - p(1), w = p(0) - p(1);
            const double dd = dot(d, d), t = dot(w, d) / dd;
            move(0, (1 / dd) * outer(d, d));
            move(1, (1 - t) * same + (1 / dd) * outer(d, scaled(d, 2 * t - 1) - w));
            return move(2, t * same + (1 / dd) * outer(d, w - scaled(d, 2 * t)));
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
            move(0, same - by_u - by_v);
            move(1, by_u);
            return move(2, by_v);
        }
        case Construction::extension: {
            const Matrix by = step.number / scale_ * unit_by(p(1) - p(0));
            move(0, -1.0 * by);
            return move(1, same + by);
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
            const Vec2 by_u = scaled(turn(u), -side), by_v = scaled(turn(v), side);
            add_slope(id, step.in[0], by_u);
            add_slope(id, step.in[1], scaled(by_u + by_v, -1));
            return add_slope(id, step.in[2], by_v);
        }
        case Measure::angle2: {
            const Vec2 by_u = scaled(turn(p(1) - p(0)), -1), by_v = turn(p(3) - p(2));
            add_slope(id, step.in[0], scaled(by_u, -1));
            add_slope(id, step.in[1], by_u);
            add_slope(id, step.in[2], scaled(by_v, -1));
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
    add_point(id, step.in[0], {{-1, 0}, {0, -1}});
    add_point(id, step.in[1], {{1, 0}, {0, 1}});
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
    const Vec2 by = scaled(unit, sign * scale_);
    for (Slope& slope : slopes_of(id)) slope = {scaled(slope.x, by.x) + scaled(slope.y, by.y), {}};
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
        add(id, from, [&](Slope& sum, const Slope& term) { sum.y = sum.y + scaled(term.x, by); });
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
        if (at_border_[comparison] && compares(program_.steps[comparison]) && !at_border_[factor])
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
    if (!compares(program_.steps[selector])) {
        const double number = at(selector).x;
        border = border || turns_within(selector, std::floor(number)) || turns_within(selector, std::ceil(number));
    } else if (border && step.in[2] == 2 && !program_.by_norm[id]) {
        border = jumps(id, selector, alternative(1), alternative(0));
    }
    if (chosen != 0) add_number(id, chosen, 1);
    at_border_[id] = border || at_border_[chosen];
    closed_[id] = closed_[selector] || closed_[chosen];
}

std::optional<std::vector<ProgramGradient::Part>> ProgramGradient::slopes(int item, int sex, int band) {
    follow(sex, band);
    const StepId root = program_.items[static_cast<std::size_t>(item)].value;
    if (opaque_[root]) return std::nullopt;
    derive(root);
    if (closed_[root]) return std::nullopt;
    std::vector<Part> parts;
    for (std::size_t i = first_[root]; i < first_[root + 1]; ++i)
        parts.push_back({landmarks_[leaves_[i]], slopes_[i].x});
    return parts;
}

ProgramGradient::Error ProgramGradient::error(int item, const ProgramRun::Result& result, int sex, int band) {
    follow(sex, band);
    const Program::Item& of = program_.items[static_cast<std::size_t>(item)];
    const StepId root = of.value;
    Error error;
    if (opaque_[root]) return error;
    derive(root);
    if (closed_[root]) return error;
    double most = 0, all = 0;
    for (std::size_t i = first_[root]; i < first_[root + 1]; ++i) {
        const Spread& spread = spreads_[leaves_[i]];
        const StepId landmark = landmarks_[leaves_[i]];
        if (!spread.known) error.without.push_back(landmark);
        const double along = dot(slopes_[i].x, spread.along), across = dot(slopes_[i].x, spread.across);
        const double variance = along * along + across * across;
        all += variance;
        if (spread.assumed && variance > 0) error.assumed.push_back(landmark);
        if (variance > most) most = variance, error.mostly = landmark;
    }
    error.state = !error.without.empty()                    ? ErrorState::no_figure
                  : at_border_[root] || !std::isfinite(all) ? ErrorState::at_border
                                                            : ErrorState::known;
    if (error.state != ErrorState::known) return error.mostly = no_step, error.assumed.clear(), error;
    error.value = std::sqrt(all);
    error.share = all > 0 ? most / all : 0;
    if (!result.mean || !result.sd || *result.sd == 0) return error;
    // Norms that are formulas move with the landmarks.
    const double sd = *result.sd;
    const StepId mean_formula = run_.norm_formula_of(of.mean), sd_formula = run_.norm_formula_of(of.sd);
    const auto moving = [&](StepId id) { return id != no_step && !opaque_[id] && first_[id] < first_[id + 1]; };
    error.deviation = error.value / std::abs(sd);
    if (!moving(mean_formula) && !moving(sd_formula)) return error;
    std::vector<Vec2> slopes(landmarks_.size());
    const auto collect = [&](StepId id, double by) {
        if (!moving(id)) return;
        derive(id);
        for (std::size_t i = first_[id]; i < first_[id + 1]; ++i) {
            Vec2& sum = slopes[leaves_[i]];
            sum = sum + scaled(slopes_[i].x, by);
        }
    };
    for (std::size_t i = first_[root]; i < first_[root + 1]; ++i) slopes[leaves_[i]] = scaled(slopes_[i].x, 1 / sd);
    collect(mean_formula, -1 / sd);
    collect(sd_formula, (*result.mean - result.value) / (sd * sd));
    double variance = 0;
    for (std::size_t i = 0; i < slopes.size(); ++i) {
        const double along = dot(slopes[i], spreads_[i].along), across = dot(slopes[i], spreads_[i].across);
        variance += along * along + across * across;
    }
    error.deviation = std::sqrt(variance);
    return error;
}

}  // namespace tool
