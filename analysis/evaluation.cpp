#include "analysis/evaluation.h"

#include <algorithm>
#include <cmath>

#include "analysis/item_text.h"
#include "platform/number_text.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "util/decimal_text.h"

namespace tool {
namespace {

struct Alternative {
    std::string_view text;
    std::string_view up_to_here;  // the list from its start to the alternative's end
};

// Number `selector` of the list, cut toward zero; nothing below zero, beyond the list or for NaN.
std::optional<Alternative> select(std::string_view list, double selector) {
    const int number = truncated(selector);
    if (number < 0 || selector != selector) return std::nullopt;
    std::size_t begin = 0;
    for (int left = number; left > 0; --left) {
        const std::size_t semicolon = list.find(';', begin);
        if (semicolon == std::string_view::npos) return std::nullopt;
        begin = semicolon + 1;
    }
    const std::size_t end = std::min(list.find(';', begin), list.size());
    return Alternative{list.substr(begin, end - begin), list.substr(0, end)};
}

}  // namespace

bool judges_palate(std::string_view expression) {
    if (!expression.starts_with("Model")) return false;
    const std::string_view token = expression.substr(std::min<std::size_t>(6, expression.size()), 6);
    return token == "[PLTU]" || token == "[PLTL]";
}

// Kept: without decimals the printed text is read as an integer and printed again, so that -0.2 shows as 0.
std::string norm_formula_text(double value, int decimals) {
    if (std::isnan(value)) return "nan";  // without its sign, which processors do not agree on
    const std::string text = print_fixed(value, decimals);
    return decimals == 0 ? print_int(read_int(text)) : text;
}

// What is printed with some decimals is a whole number of their steps; read again, that number divided by the power of
// ten, both of which a double holds. Near the middle of two steps only the printer tells which, and zeros have signs.
std::optional<double> norm_formula_number(double value, int decimals) {
    constexpr double steps[] = {1, 10, 100, 1000}, largest = 1e6, surely_nearest = 0.499;
    if (decimals >= 1 && decimals <= 3 && std::abs(value) < largest) {
        const double shifted = value * steps[decimals];
        const double whole = truncated(shifted + (shifted < 0 ? -0.5 : 0.5));
        if (whole != 0 && std::abs(shifted - whole) < surely_nearest) return whole / steps[decimals];
    }
    return norm_of_text(norm_formula_text(value, decimals)).value;
}

std::optional<NormFormula> norm_formula(std::string_view norm_text) {
    if (!is_digit(norm_text.back())) return std::nullopt;
    return NormFormula{norm_text.substr(0, std::max<std::size_t>(norm_text.size(), 2) - 2), norm_text.back() - '0'};
}

Norm norm_of_text(std::string_view text) {
    Norm norm{std::string(text), std::nullopt};
    if (!norm.text.empty() && is_number(norm.text)) norm.value = read_double(norm.text);
    return norm;
}

double deviation(double value, double mean, double sd) {
    return sd == 0 ? 0.0 : (value - mean) / sd;
}

double ItemResult::asked(Ask ask) const {
    switch (ask) {
        case Ask::deviation: return deviation(value, mean.value.value_or(0.0), sd.value.value_or(0.0));
        case Ask::mean: return mean.value.value_or(0.0);
        case Ask::sd: return sd.value.value_or(0.0);
        case Ask::value: break;
    }
    return value;
}

Evaluation::Evaluation(FileSource file, Landmarks& landmarks, int sex, int band)
    : source_(std::move(file)), points_(landmarks), sex_(sex), band_(band) {}

const DefinitionFile* Evaluation::file() {
    if (!file_) file_ = source_();
    return *file_;
}

std::optional<ItemResult> Evaluation::item(std::string_view name, Ask ask) {
    for (;;) {
        const bool alone = evaluations_ == 0;
        const bool begun = !begin_item(name, ask, false);
        if (begun) run(nullptr);
        if (at_limit_) {
            known_.clear();
            evaluations_ = 0;
            at_limit_ = false;
            if (!alone) continue;
        }
        return begun ? std::optional(std::move(finished_)) : std::nullopt;
    }
}

Norm Evaluation::norm(std::string_view name, NormPart part) {
    Frame& frame = frames_.emplace_back();
    band_missed_ = false;
    if (const DefinitionFile* definitions = file())
        frame.lines = definitions->find(name, DefinitionFile::Look::norms, sex_);
    begin_norm(frame, part);
    run(nullptr);
    return std::move(part == NormPart::mean ? finished_.mean : finished_.sd);
}

std::size_t Evaluation::formula(std::string_view text, bool top_level, ValueList<double> values) {
    Formula root(text, top_level, values, points_, [this](const Reference& reference) {
        if (const auto known = begin_item(reference.name, reference.ask)) return *known;
        run(nullptr);
        return asked_;
    });
    run(&root);
    return root.extent();
}

std::optional<double> Evaluation::begin_item(std::string_view name, Ask ask, bool remembered) {
    if (evaluations_ >= most_evaluations) {
        at_limit_ = true;
        return 0.0;
    }
    const DefinitionFile* definitions = file();
    if (!definitions) return 0.0;
    using Look = DefinitionFile::Look;
    const DefinitionFile::Lines lines = definitions->find(name, ask == Ask::value ? Look::item : Look::both, sex_);
    if (!lines.item || lines.item->rest.empty()) return 0.0;
    if (const auto known = known_.find({lines.item->name.data(), ask}); remembered && known != known_.end()) {
        points_.note(known->second.degeneracy);
        band_missed_ = band_missed_ || known->second.needs_band;
        return known->second.value;
    }
    const bool measures = ask == Ask::value || ask == Ask::deviation;
    if (measures && met_again(lines.item->name.data())) return 0.0;
    ++evaluations_;
    Frame& frame = frames_.emplace_back();
    frame.outer = points_.exchange_degeneracy({});
    frame.outer_band_missed = std::exchange(band_missed_, false);
    frame.ask = ask;
    frame.lines = lines;
    if (measures) {
        being_evaluated_.insert(lines.item->name.data());
        frame.expression = split_type(lines.item->rest).expression;
        begin_formula(frame, Stage::expression, frame.expression);
    } else {
        begin_norm(frame, ask == Ask::mean ? NormPart::mean : NormPart::sd);
    }
    return std::nullopt;
}

// Whether the value or norm that the line gives is being evaluated further out.
bool Evaluation::met_again(const char* line) {
    const bool met = being_evaluated_.contains(line);
    if (met) frames_.back().in_circle = true;
    return met;
}

void Evaluation::begin_formula(Frame& frame, Stage stage, std::string_view text) {
    frame.stage = stage;
    frame.count = 0;
    frame.formula.emplace(text, true, ValueList(frame.values, &frame.count), points_);
}

void Evaluation::begin_norm(Frame& frame, NormPart part) {
    frame.stage = part == NormPart::mean ? Stage::mean : Stage::sd;
    const auto& line = part == NormPart::mean ? frame.lines.mean : frame.lines.sd;
    if (!line || met_again(line->name.data())) return norm_done(frame, {});
    band_missed_ = band_missed_ || (band_ < 0 && norms_differ(line->rest));
    Norm norm = norm_of_text(norm_of_band(line->rest, line->second_set(), band_));
    if (norm.value || norm.text.empty()) return norm_done(frame, std::move(norm));
    const auto formula = norm_formula(norm.text);
    if (!formula) return norm_done(frame, {});
    frame.norm_line = line->name.data();
    being_evaluated_.insert(frame.norm_line);
    frame.norm_decimals = formula->decimals;
    begin_formula(frame, frame.stage, formula->text);
}

void Evaluation::norm_done(Frame& frame, Norm norm) {
    if (frame.norm_line) being_evaluated_.erase(frame.norm_line);
    frame.norm_line = nullptr;
    if (std::exchange(band_missed_, false)) {
        norm = {};
        frame.result.norm_needs_band = true;
    }
    const bool mean = frame.stage == Stage::mean;
    (mean ? frame.result.mean : frame.result.sd) = std::move(norm);
    frame.stage = Stage::done;
    if (mean && frame.ask == Ask::deviation) begin_norm(frame, NormPart::sd);
}

void Evaluation::formula_done(Frame& frame) {
    const double value = frame.formula->result();
    frame.formula.reset();
    switch (frame.stage) {
        case Stage::expression: return expression_done(frame, value);
        case Stage::alternative: return item_done(frame, value);
        default: return norm_done(frame, norm_of_text(norm_formula_text(value, frame.norm_decimals)));
    }
}

void Evaluation::expression_done(Frame& frame, double value) {
    // Kept: -1 is a palate that nobody has judged yet, which selects nothing.
    if (value == -1.0 && judges_palate(frame.expression)) return item_done(frame, 0.0);
    const std::size_t semicolon = frame.expression.find(';');
    if (semicolon == std::string_view::npos) return item_done(frame, value);
    const auto selected = select(frame.expression.substr(semicolon + 1), value);
    if (!selected) return item_done(frame, 0.0);
    frame.result.alternative = selected->text;
    frame.result.is_text = selected->up_to_here.find('"') != std::string_view::npos;
    if (frame.result.is_text) return item_done(frame, 0.0);
    begin_formula(frame, Stage::alternative, selected->text);
}

void Evaluation::item_done(Frame& frame, double value) {
    being_evaluated_.erase(frame.lines.item->name.data());
    frame.result.value = value;
    if (frames_.size() == 1) frame.result.degeneracy = points_.degeneracy();
    frame.result.needs_band = std::exchange(band_missed_, false);
    frame.stage = Stage::done;
    if (frame.ask == Ask::deviation) begin_norm(frame, NormPart::mean);
}

// Works until the frames that were begun are done, and with them the root formula that asked for them.
void Evaluation::run(Formula<Landmarks>* root) {
    for (;;) {
        Formula<Landmarks>* formula = frames_.empty()          ? root
                                      : frames_.back().formula ? &*frames_.back().formula
                                                               : nullptr;
        if (formula) {
            if (const auto reference = formula->advance()) {
                if (const auto known = begin_item(reference->name, reference->ask)) formula->supply(*known);
            } else if (frames_.empty()) {
                return;
            } else {
                formula_done(frames_.back());
            }
            continue;
        }
        finish_frame(root);
        Formula<Landmarks>* asking = frames_.empty() ? root : &*frames_.back().formula;
        if (!asking) return;
        asking->supply(asked_);
    }
}

// Takes the innermost frame's result. What an item gave is remembered; of one that was asked for from outside the value
// alone, too, which others refer to. That counts as evaluated, so that no call goes further for it than alone.
void Evaluation::finish_frame(const Formula<Landmarks>* root) {
    Frame& done = frames_.back();
    const bool in_circle = done.in_circle;
    asked_ = done.result.asked(done.ask);
    auto degeneracy = points_.exchange_degeneracy(std::move(done.outer));
    points_.note(degeneracy);
    const bool needs_band = done.result.needs_band || done.result.norm_needs_band;
    band_missed_ = done.outer_band_missed || needs_band;
    if (done.lines.item && !in_circle) {
        const char* const line = done.lines.item->name.data();
        if (done.ask == Ask::deviation && frames_.size() == 1 && !root) {
            known_.insert({{line, Ask::value}, {done.result.value, done.result.degeneracy, done.result.needs_band}});
            ++evaluations_;
        }
        known_.insert({{line, done.ask}, {asked_, std::move(degeneracy), needs_band}});
    }
    finished_ = std::move(done.result);
    frames_.pop_back();
    if (in_circle && !frames_.empty()) frames_.back().in_circle = true;
}

}  // namespace tool
