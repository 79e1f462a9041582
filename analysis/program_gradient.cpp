#include "analysis/program_gradient.h"

#include <algorithm>
#include <cmath>

#include "analysis/error_frame.h"
#include "analysis/graph_walk.h"
#include "analysis/landmark_names.h"
#include "analysis/program_step.h"
#include "platform/code_page.h"

namespace tool {
namespace {

constexpr std::size_t most_slopes = std::size_t{1} << 20;  // of all steps together, 32 MiB; no analysis comes near

}  // namespace

ProgramGradient::ProgramGradient(const Program& program, const ProgramRun& run) : program_(program), run_(run) {
    lay_out();
    set_errors(LandmarkErrors());
}

// Which landmarks each step rests on.
void ProgramGradient::lay_out() {
    const std::size_t count = program_.steps.size();
    std::vector<std::vector<std::uint32_t>> leaves(count);
    opaque_.resize(count);
    std::size_t all = 0;
    const auto enter = [&](std::size_t id, const auto& reach) {
        program_.each_source(program_.steps[id], [&](StepId source) {
            if (reach(source)) opaque_[id] = true;  // circles are the text's
        });
    };
    const auto leave = [&](std::size_t id) {
        const Step& step = program_.steps[id];
        std::vector<std::uint32_t>& own = leaves[id];
        if (step.kind == Step::Kind::cast_measure) opaque_[id] = true;
        if (is_landmark(step)) {
            own.push_back(static_cast<std::uint32_t>(landmarks_.size()));
            landmarks_.push_back(static_cast<StepId>(id));
        }
        program_.each_source(step, [&](StepId source) {
            if (opaque_[source]) opaque_[id] = true;
            own.insert(own.end(), leaves[source].begin(), leaves[source].end());
        });
        std::ranges::sort(own);
        own.erase(std::unique(own.begin(), own.end()), own.end());
        if (all + own.size() > most_slopes) own.clear(), opaque_[id] = true;
        all += own.size();
    };
    walk_all(count, enter, leave);
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
        spread = {true, figure->assumed, figure->along_mm / scale_ * frame.along,
                  figure->across_mm / scale_ * frame.across};
        near_ = std::max({near_, figure->along_mm / scale_, figure->across_mm / scale_});
    }
    near_ *= 10;
}

void ProgramGradient::follow(int sex, int band) {
    if (sex == sex_ && band == band_) return;
    sex_ = sex, band_ = band;
    norms_since_ = ++now_;
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

void ProgramGradient::add_point(StepId to, StepId from, const Matrix& by) {
    add(to, from, [&](Slope& sum, const Slope& term) {
        sum.x = sum.x + by.x.x * term.x + by.x.y * term.y;
        sum.y = sum.y + by.y.x * term.x + by.y.y * term.y;
    });
}

void ProgramGradient::add_slope(StepId to, StepId from, Vec2 by) {
    add(to, from, [&](Slope& sum, const Slope& term) { sum.x = sum.x + by.x * term.x + by.y * term.y; });
}

void ProgramGradient::add_number(StepId to, StepId from, double by) {
    add(to, from, [&](Slope& sum, const Slope& term) { sum.x = sum.x + by * term.x; });
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
            sum = sum + by * slopes_[i].x;
        }
    };
    for (std::size_t i = first_[root]; i < first_[root + 1]; ++i) slopes[leaves_[i]] = 1 / sd * slopes_[i].x;
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
