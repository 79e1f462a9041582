#include "analysis/program_run.h"

#include <algorithm>

#include "analysis/cast_points.h"
#include "analysis/evaluation.h"
#include "analysis/measures.h"
#include "analysis/program_step.h"
#include "platform/numbers.h"

namespace tool {

ProgramRun::ProgramRun(const Program& program)
    : program_(program),
      values_(program.steps.size()),
      computed_(program.steps.size()),
      absent_(program.words),
      surely_absent_(program.words) {}

bool ProgramRun::begin(Landmarks& landmarks) {
    if (!landmarks.has_record()) return false;  // any name may be that of a virtual landmark then
    landmarks_ = &landmarks;
    record_since_ = norms_since_ = ++now_;
    ran_ = suspicion_spread_ = false;
    suspects_.clear();
    virtual_suspect_ = false;
    std::ranges::fill(absent_, 0);
    std::ranges::fill(surely_absent_, 0);
    for (std::size_t bit = 0; bit <= program_.never_met; ++bit) {
        const Presence found = presence(bit);
        const std::uint64_t mask = std::uint64_t{1} << bit % 64;
        if (found != Presence::present) absent_[bit / 64] |= mask;
        if (found == Presence::absent) surely_absent_[bit / 64] |= mask;
    }
    return true;
}

ProgramRun::Presence ProgramRun::presence(std::size_t bit) const {
    if (bit == program_.never_met) return Presence::unsure;
    const int slot = static_cast<int>(bit);
    bool absent = false;
    if (bit >= program_.slots) {
        const Landmarks::Found found = landmarks_->find(program_.names[bit - program_.slots]);
        if (found.source == Landmarks::Source::virtually) return Presence::unsure;  // it needs others in turn
        absent = landmarks_->position(found) == Vec2();
    } else if (landmarks_->cast()) {
        absent = cast_point(*landmarks_->cast(), slot) == CPoint();
    } else {
        absent = landmarks_->position({Landmarks::Source::fixed, slot}) == Vec2();
    }
    return absent ? Presence::absent : Presence::present;
}

bool ProgramRun::any(const std::uint64_t* needs, const std::vector<std::uint64_t>& absent) {
    for (std::size_t word = 0; word < absent.size(); ++word)
        if (needs[word] & absent[word]) return true;
    return false;
}

bool ProgramRun::has_all_for_norm(int norm, int sex) const {
    const int line = norm < 0 ? -1 : program_.line(norm, sex);
    return line < 0 || !any(program_.needs_of_line(line), absent_);
}

void ProgramRun::run() {
    for (const StepId id : program_.order) compute(id);
    ran_ = true;
}

bool ProgramRun::known(StepId id) const {
    const bool by_norm = program_.by_norm[id];
    return (ran_ && !by_norm) || computed_[id] >= (by_norm ? norms_since_ : record_since_);
}

// Computes what the step takes, then the step, on a stack of the heap: items may refer to items through any number of
// others.
double ProgramRun::value(StepId id) {
    wanted_.clear();
    wanted_.push_back(id);
    while (!wanted_.empty()) {
        const StepId wanted = wanted_.back();
        const std::size_t before = wanted_.size();
        const auto want = [&](StepId input) {
            if (!known(input)) wanted_.push_back(input);
        };
        const Step& step = program_.steps[wanted];
        if (step.kind == Step::Kind::norm) {
            const Program::NormField* field = norm_field(static_cast<int>(step.in[0]));
            if (field && field->formula != no_step) want(field->formula);
        } else if (step.kind == Step::Kind::choice) {
            want(step.in[0]);
            if (wanted_.size() == before) want(chosen(step));
        } else {
            program_.each_input(step, want);
        }
        if (wanted_.size() > before) continue;
        wanted_.pop_back();
        if (known(wanted)) continue;
        compute(wanted);
        computed_[wanted] = now_;
    }
    return values_[id].x;
}

void ProgramRun::compute(StepId id) {
    const Step& step = program_.steps[id];
    const auto number = [&](std::size_t i) { return values_[step.in[i]].x; };
    Vec2& result = values_[id];
    if (is_geometric(step)) {
        const std::array in{values_[step.in[0]], values_[step.in[1]], values_[step.in[2]], values_[step.in[3]]};
        if (may_be_undefined(program_, step, in)) suspects_.push_back(id);
        result = geometric(step, in, landmarks_->scale(), landmarks_->steps());
        return;
    }
    switch (step.kind) {
        case Step::Kind::number: result = {step.number, 0}; break;
        case Step::Kind::landmark:
            result = landmarks_->position({Landmarks::Source::fixed, static_cast<int>(step.in[0])});
            break;
        case Step::Kind::named: {
            // One that another resolved is not read again, so that it is told for all of them.
            PointReader reader(*landmarks_);
            result = reader.landmark(program_.names[step.in[0]]);
            virtual_suspect_ = virtual_suspect_ || reader.degeneracy();
            break;
        }
        case Step::Kind::cast_measure: result.x = measured_cast(program_.tokens[step.in[0]], *landmarks_); break;
        case Step::Kind::operation: result.x = combined(static_cast<Operation>(step.what), number(0), number(1)); break;
        case Step::Kind::first_not_zero: {
            StepId place = 0;
            while (place < step.in[1] && truncated(values_[program_.lists[step.in[0] + place]].x) == 0) ++place;
            result.x = place;
            break;
        }
        case Step::Kind::unjudged: result.x = number(0) == -1.0 ? 0.0 : number(0); break;
        case Step::Kind::choice: result.x = values_[chosen(step)].x; break;
        case Step::Kind::item: result.x = values_[program_.items[step.in[0]].value].x; break;
        case Step::Kind::norm: result.x = norm_number(norm_field(static_cast<int>(step.in[0]))).value_or(0.0); break;
        case Step::Kind::deviation: result.x = deviation(number(0), number(1), number(2)); break;
        default: break;
    }
}

// Whether a step that may be undefined, or a virtual landmark when one may be, is among those that `root` takes.
bool ProgramRun::leads_to_suspect(StepId root) {
    if (suspects_.empty() && !virtual_suspect_) return false;
    if (ran_ && !suspicion_spread_) spread_suspicion();
    if (ran_ && !program_.by_norm[root]) return leads_to_suspect_[root];
    std::vector<bool> met(program_.steps.size());
    wanted_.assign(1, root);
    while (!wanted_.empty()) {
        const StepId id = wanted_.back();
        wanted_.pop_back();
        if (met[id]) continue;
        met[id] = true;
        if (ran_ && !program_.by_norm[id]) {
            if (leads_to_suspect_[id]) return true;
            continue;
        }
        const Step& step = program_.steps[id];
        if (virtual_suspect_ && step.kind == Step::Kind::named) return true;
        if (std::ranges::find(suspects_, id) != suspects_.end()) return true;
        program_.each_source(step, [&](StepId source) { wanted_.push_back(source); });
    }
    return false;
}

// The same for all steps at once that do not depend on norms.
void ProgramRun::spread_suspicion() {
    leads_to_suspect_.assign(program_.steps.size(), false);
    for (const StepId id : suspects_) leads_to_suspect_[id] = true;
    for (const StepId id : program_.order) {
        const Step& step = program_.steps[id];
        if (virtual_suspect_ && step.kind == Step::Kind::named) leads_to_suspect_[id] = true;
        if (leads_to_suspect_[id]) continue;
        char leads = false;
        program_.each_input(step, [&](StepId input) { leads |= leads_to_suspect_[input]; });
        leads_to_suspect_[id] = leads;
    }
    suspicion_spread_ = true;
}

// Nothing is selected by what is below zero, beyond the list, or no number.
std::optional<std::size_t> ProgramRun::selected(double selector, std::size_t count) {
    const int number = truncated(selector);
    if (number < 0 || selector != selector || static_cast<std::size_t>(number) >= count) return std::nullopt;
    return static_cast<std::size_t>(number);
}

StepId ProgramRun::chosen(const Step& choice) const {
    const auto place = selected(values_[choice.in[0]].x, choice.in[2]);
    return place ? program_.lists[choice.in[1] + *place] : 0;
}

const Program::NormLine* ProgramRun::norm_line(int norm) const {
    const int line = norm < 0 ? -1 : program_.line(norm, sex_);
    return line < 0 ? nullptr : &program_.norm_lines[static_cast<std::size_t>(line)];
}

const Program::NormField* ProgramRun::norm_field(int norm) const {
    const Program::NormLine* line = norm_line(norm);
    return line ? &line->field(band_) : nullptr;
}

StepId ProgramRun::norm_formula_of(int norm) const {
    const Program::NormField* field = norm_field(norm);
    return field ? field->formula : no_step;
}

// Of a norm whose formula, if it has one, is computed.
std::optional<double> ProgramRun::norm_number(const Program::NormField* field) const {
    if (!field || field->formula == no_step) return field ? field->number : std::nullopt;
    return norm_formula_number(values_[field->formula].x, field->decimals);
}

std::optional<double> ProgramRun::norm(int norm) {
    const Program::NormField* field = norm_field(norm);
    if (field && field->formula != no_step && !known(field->formula)) value(field->formula);
    return norm_number(field);
}

ProgramRun::Result ProgramRun::item(int place, int sex, int band) {
    if (sex != sex_ || band != band_) {
        sex_ = sex, band_ = band;
        norms_since_ = ++now_;
    }
    const Program::Item& item = program_.items[static_cast<std::size_t>(place)];
    Result result;
    if (band < 0) {
        result.rests_on_norms = program_.by_norm[item.value];
        for (const int part : {item.mean, item.sd}) {
            const Program::NormLine* line = norm_line(part);
            const StepId formula = line ? line->field(band).formula : no_step;
            result.norm_needs_band = result.norm_needs_band || (line && line->differs);
            result.rests_on_norms = result.rests_on_norms || (formula != no_step && program_.by_norm[formula]);
        }
        if (result.rests_on_norms) return result;
    }
    result.value = known(item.value) ? values_[item.value].x : value(item.value);
    result.suspect = leads_to_suspect(item.value);
    result.mean = norm(item.mean);
    result.sd = norm(item.sd);
    if (item.selector == no_step) return result;
    if (const auto number = selected(values_[item.selector].x, item.alternatives.size()))
        result.alternative = &item.alternatives[*number];
    return result;
}

}  // namespace tool
