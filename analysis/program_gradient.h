// How the values of a program answer to the coordinates of the landmarks that they rest on: the derivatives of each
// step, carried forward from step to step beside its value (forward accumulation; Griewank & Walther, Evaluating
// Derivatives, 2nd ed. 2008, ch. 3). Values and their bits are ProgramRun's. With the errors of the landmarks the
// derivatives give the standard errors of the values. For one thread.
//
// Derivatives do not tell where a value jumps: where a comparison, a sign or a choice turns. Where the landmarks'
// errors reach so far (two standard errors), and the jump is larger than what the derivatives tell, the value is at a
// border and has no error; where two alternatives meet without a jump, as at the lip that lies in front, the error is
// that of the one chosen, which is rather too large. A length of 0 has a derivative along the one way that its ends can
// move apart; ends that can part either way are at a border, too. Angles of 0 and 180 degrees, which fold, have the
// derivatives of the angle with a sign, so an error that is rather too large. A norm's formula is derived without the
// rounding of its value.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "LandmarkErrors.h"
#include "analysis/program_run.h"
#include "geometry/matrix.h"

namespace tool {

class ProgramGradient {
 public:
    // Both must outlive this object.
    ProgramGradient(const Program& program, const ProgramRun& run);

    // The errors that landmarks have from here on.
    void set_errors(const LandmarkErrors& errors);
    // The record that `run` was begun with, and has run.
    void begin(const Landmarks& landmarks);

    struct Error {
        ErrorState state = ErrorState::not_derived;
        double value = 0, deviation = 0;
        StepId mostly = no_step;
        double share = 0;
        std::vector<StepId> without = {}, assumed = {};
    };
    // Of an item that `run` has just given for the same sex and band; `result` is what it gave.
    Error error(int item, const ProgramRun::Result& result, int sex, int band);
    // As formulas name it.
    std::string_view name(StepId landmark) const;

 private:
    using Slope = Matrix;  // the derivatives of a step's x and y by a landmark's coordinates; numbers have x only
    struct Moments {
        double xx = 0, xy = 0, yy = 0;
    };
    struct Spread {
        bool known = false, assumed = false;
        Vec2 along, across;  // a standard error each way, in steps
    };

    void lay_out();
    std::span<Slope> slopes_of(StepId id) { return {slopes_.data() + first_[id], first_[id + 1] - first_[id]}; }
    std::span<const std::uint32_t> leaves_of(StepId id) const {
        return {leaves_.data() + first_[id], first_[id + 1] - first_[id]};
    }
    Vec2 at(StepId id) const { return run_.computed(id); }
    bool done(StepId id) const { return done_[id] >= (program_.by_norm[id] ? norms_since_ : record_since_); }
    void follow(int sex, int band);
    void derive(StepId root);
    template <class Visit>
    void each_used(StepId id, const Visit& visit) const;
    template <class Add>
    void add(StepId to, StepId from, const Add& add);
    void add_point(StepId to, StepId from, const Matrix& by);
    void add_slope(StepId to, StepId from, Vec2 by);
    void add_number(StepId to, StepId from, double by);
    Moments moments(StepId id) const;

    // step_derivatives.cpp
    void compute(StepId id);
    void compute_construction(StepId id);
    void compute_measure(StepId id);
    void compute_length(StepId id, Measure measure);
    void compute_operation(StepId id);
    bool jumps(StepId id, StepId comparison, StepId more, StepId less);
    void compute_product(StepId id, StepId left, StepId right);
    void compute_choice(StepId id);
    bool turns_within(StepId number, double border) const;

    const Program& program_;
    const ProgramRun& run_;
    double scale_ = 0, pixel_ = 1;
    std::vector<StepId> landmarks_;  // the steps that are one, by number
    std::vector<Spread> spreads_;    // of each
    std::vector<const LandmarkError*> figures_;
    LandmarkErrors errors_;
    std::vector<std::size_t> first_;     // of each step where its landmarks begin
    std::vector<std::uint32_t> leaves_;  // numbers of landmarks, rising within a step
    std::vector<Slope> slopes_;
    std::vector<bool> opaque_;              // of each step: rests on what has no derivatives, for any record
    std::vector<char> closed_, at_border_;  // the same of the record
    std::vector<std::uint64_t> done_;
    std::uint64_t now_ = 0, record_since_ = 0, norms_since_ = 0;
    int sex_ = 0, band_ = 0;
    double near_ = 0;  // steps; landmarks' errors can matter to what lies nearer
    std::vector<StepId> wanted_;
};

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

}  // namespace tool
