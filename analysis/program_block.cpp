#include "analysis/program_block.h"

#include <algorithm>
#include <bit>

#include "analysis/landmark_names.h"
#include "analysis/program_step.h"

namespace tool {
namespace {

constexpr Lanes all_lanes = ~Lanes{0};

template <class Visit>
void each_bit(std::uint64_t bits, const Visit& visit) {
    for (; bits; bits &= bits - 1) visit(static_cast<std::size_t>(std::countr_zero(bits)));
}

}  // namespace

ProgramBlock::ProgramBlock(const Program& program)
    : program_(program),
      absent_(program.never_met + 1),
      served_(program.items.size()),
      only_sign_(program.steps.size(), true),
      is_point_(program.steps.size()),
      place_(program.steps.size()),
      lost_(program.steps.size()) {
    if (!is_cast(program.kind)) plan();
}

std::size_t ProgramBlock::bit_of(const Step& landmark) const {
    return landmark.kind == Step::Kind::named ? program_.slots + landmark.in[0] : landmark.in[0];
}

bool ProgramBlock::is_served(const Step& step) const {
    switch (step.kind) {
        case Step::Kind::landmark:
        case Step::Kind::named: return bit_of(step) < program_.never_met;
        case Step::Kind::cast_measure:
        case Step::Kind::norm:
        case Step::Kind::deviation: return false;
        default: return true;
    }
}

// Finds what served items take, and gives each step its place.
void ProgramBlock::plan() {
    std::vector<bool> possible(program_.steps.size()), wanted(program_.steps.size());
    for (const StepId id : program_.order) {
        const Step& step = program_.steps[id];
        possible[id] = is_served(step);
        program_.each_input(step, [&](StepId input) { possible[id] = possible[id] && possible[input]; });
    }
    std::vector<std::uint64_t> needs(program_.words);
    for (std::size_t i = 0; i < program_.items.size(); ++i) {
        const Program::Item& item = program_.items[i];
        served_[i] = item.has_formula && !item.as_text && possible[item.value];
        if (!served_[i]) continue;
        wanted[item.value] = true;
        only_sign_[item.value] = false;
        for (std::size_t word = 0; word < program_.words; ++word)
            needs[word] |= program_.needs_of_item(static_cast<int>(i))[word];
    }
    for (auto id_from_last = program_.order.rbegin(); id_from_last != program_.order.rend(); ++id_from_last) {
        if (!wanted[*id_from_last]) continue;
        const Step& step = program_.steps[*id_from_last];
        const auto is_zero = [&](StepId input) {
            return program_.steps[input].kind == Step::Kind::number && program_.steps[input].number == 0;
        };
        const bool compares_with_0 = is_comparison(step) && (is_zero(step.in[0]) || is_zero(step.in[1]));
        program_.each_input(step, [&](StepId input) {
            wanted[input] = true;
            if (!compares_with_0) only_sign_[input] = false;
        });
        if (is_landmark(step)) needs[bit_of(step) / 64] |= std::uint64_t{1} << bit_of(step) % 64;
    }
    std::vector<std::size_t> place_of_bit(program_.never_met);
    for (std::size_t bit = 0; bit < program_.never_met; ++bit) {
        if (!(needs[bit / 64] >> bit % 64 & 1)) continue;
        place_of_bit[bit] = landmarks_.size();
        landmarks_.push_back(bit);
    }
    std::size_t points = landmarks_.size(), numbers = 0;
    for (const StepId id : program_.order) {
        if (!wanted[id]) continue;
        const Step& step = program_.steps[id];
        if (is_landmark(step)) {
            is_point_[id] = true;
            place_[id] = place_of_bit[bit_of(step)];
        } else {
            is_point_[id] = step.kind == Step::Kind::construction || step.kind == Step::Kind::effective_a ||
                            step.kind == Step::Kind::number;
            place_[id] = is_point_[id] ? points++ : numbers++;
        }
        order_.push_back(id);
    }
    points_.resize(points);
    numbers_.resize(numbers);
    for (const StepId id : order_)
        if (program_.steps[id].kind == Step::Kind::number)
            std::ranges::fill(points_[place_[id]].x.of, program_.steps[id].number);
}

void ProgramBlock::run(std::size_t count) {
    all_ = count < lane_count ? (Lanes{1} << count) - 1 : all_lanes;
    absent_.back() = all_lanes;
    for (std::size_t i = 0; i < landmarks_.size(); ++i) absent_[landmarks_[i]] = lanes_at_origin(points_[i]);
    for (const StepId id : order_) compute(id);
}

Vec2 ProgramBlock::at(StepId id, std::size_t lane) const {
    return is_point_[id] ? point(id)[lane] : Vec2(number(id)[lane], 0);
}

void ProgramBlock::compute(StepId id) {
    const Step& step = program_.steps[id];
    Lanes lost = 0;
    program_.each_input(step, [&](StepId input) { lost |= lost_[input]; });
    const Lanes apart = compute_plain(step, id);
    if (is_landmark(step)) lost = apart;
    each_bit(apart & ~lost & all_, [&](std::size_t lane) {
        const std::array in{at(step.in[0], lane), at(step.in[1], lane), at(step.in[2], lane), at(step.in[3], lane)};
        if (may_be_undefined(program_, step, in)) lost |= Lanes{1} << lane;
        const Vec2 made = geometric(step, in, scale[lane], pixel[lane]);
        LaneNumbers& x = is_point_[id] ? points_[place_[id]].x : numbers_[place_[id]];
        x[lane] = made.x;
        if (is_point_[id]) points_[place_[id]].y[lane] = made.y;
    });
    lost_[id] = lost;
}

// Tells the lanes that are not plain; of a landmark those that lack it.
Lanes ProgramBlock::compute_plain(const Step& step, StepId id) {
    const auto p = [&](std::size_t i) -> const LanePoints& { return point(step.in[i]); };
    const auto n = [&](std::size_t i) -> const LaneNumbers& { return number(step.in[i]); };
    LanePoints& made = points_[is_point_[id] ? place_[id] : 0];
    LaneNumbers& result = is_point_[id] ? made.x : numbers_[place_[id]];
    switch (step.kind) {
        case Step::Kind::landmark:
        case Step::Kind::named: return absent_[bit_of(step)];
        case Step::Kind::construction:
            switch (static_cast<Construction>(step.what)) {
                case Construction::middle: return middle(p(0), p(1), made), Lanes{0};
                case Construction::foot: return foot(p(0), p(1), p(2), made);
                case Construction::crossing: return crossing(p(0), p(1), p(2), p(3), made);
                case Construction::extension: return extension(p(0), p(1), step.number, scale, made);
                default: return all_lanes;
            }
        case Step::Kind::measure:
            switch (static_cast<Measure>(step.what)) {
                case Measure::length:
                case Measure::length_right:
                case Measure::length_down: return length(static_cast<Measure>(step.what), p(0), p(1), scale, result);
                case Measure::angle1: return angle_at(p(0), p(1), p(2), result);
                case Measure::angle2:
                    return only_sign_[id] ? sign_of_angle(p(0), p(1), p(2), p(3), result)
                                          : signed_angle(p(0), p(1), p(2), p(3), result);
                default: return all_lanes;
            }
        case Step::Kind::incisor_lean:
        case Step::Kind::effective_a: return all_lanes;
        case Step::Kind::operation: combined(static_cast<Operation>(step.what), n(0), n(1), result); break;
        case Step::Kind::first_not_zero:
            std::ranges::fill(result.of, step.in[1]);
            for (StepId i = step.in[1]; i-- > 0;) choose_not_zero(number(program_.lists[step.in[0] + i]), i, result);
            break;
        case Step::Kind::unjudged:
            for (std::size_t i = 0; i < lane_count; ++i) result[i] = n(0)[i] == -1.0 ? 0.0 : n(0)[i];
            break;
        case Step::Kind::choice:
            std::ranges::fill(result.of, 0);
            for (StepId i = 0; i < step.in[2]; ++i)
                choose(n(0), static_cast<int>(i), number(program_.lists[step.in[1] + i]), result);
            break;
        case Step::Kind::item: result = number(program_.items[step.in[0]].value); break;
        default: break;
    }
    return 0;
}

const LaneNumbers& ProgramBlock::values(int item) const {
    return number(program_.items[static_cast<std::size_t>(item)].value);
}

Lanes ProgramBlock::absent_for(const std::uint64_t* needs) const {
    Lanes lanes = 0;
    for (std::size_t word = 0; word < program_.words; ++word)
        each_bit(needs[word], [&](std::size_t bit) { lanes |= absent_[word * 64 + bit]; });
    return lanes;
}

Lanes ProgramBlock::open(int item) const {
    const StepId value = program_.items[static_cast<std::size_t>(item)].value;
    return (absent_for(program_.needs_of_item(item)) | lost_[value]) & ~lacking(item);
}

Lanes ProgramBlock::texts(int item) const {
    static constexpr LaneNumbers none{};
    const Program::Item& of = program_.items[static_cast<std::size_t>(item)];
    const auto is_text = [](const Program::Alternative& alternative) { return alternative.is_text; };
    if (std::ranges::none_of(of.alternatives, is_text)) return 0;
    LaneNumbers numbers;
    std::ranges::fill(numbers.of, 1);
    for (std::size_t i = 0; i < of.alternatives.size(); ++i)
        if (of.alternatives[i].is_text) choose(number(of.selector), static_cast<int>(i), none, numbers);
    return lanes_but(numbers);
}

}  // namespace tool
