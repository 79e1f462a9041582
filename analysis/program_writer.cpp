#include "analysis/program_writer.h"

#include <algorithm>
#include <bit>
#include <tuple>

#include "analysis/cast_measures.h"
#include "analysis/cast_points.h"
#include "analysis/item_text.h"
#include "analysis/landmark_names.h"
#include "analysis/program_order.h"
#include "util/decimal_text.h"

namespace tool {
namespace {

constexpr std::size_t most_fields = 1000;  // norms with more are told from the text; no analysis comes near

std::vector<std::string_view> alternatives_in(std::string_view list) {
    std::vector<std::string_view> alternatives;
    for (std::size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + 1) {
        end = list.find(';', begin);
        alternatives.push_back(list.substr(begin, end - begin));
    }
    return alternatives;
}

}  // namespace

class ProgramWriter::NameCollector : public FormulaNames {
 public:
    NameCollector(ProgramWriter& writer, Needer& needer) : writer_(writer), needer_(needer) {}

    void landmark(std::string_view name) override {
        const auto slot = landmark_slot(writer_.kind(), name);
        needer_.names.push_back(slot ? static_cast<std::size_t>(*slot)
                                     : writer_.program_.slots + writer_.name_place(name));
    }

    void cast_measure(std::string_view token) override {
        const std::vector<int> points = points_of_measure(token);
        if (is_lateral(writer_.kind()) || is_frontal(writer_.kind()))
            needer_.never_met = needer_.never_met || !points.empty();
        else
            needer_.names.insert(needer_.names.end(), points.begin(), points.end());
    }

    void reference(Ask ask, std::string_view name) override {
        const auto item = writer_.file_->find_item(name);
        if (item && (ask == Ask::value || ask == Ask::deviation))
            needer_.items.push_back(writer_.item_places_.at(item->name.data()));
        if (ask != Ask::value && ask != Ask::sd) want_norm(name, NormPart::mean);
        if (ask != Ask::value && ask != Ask::mean) want_norm(name, NormPart::sd);
    }

 private:
    void want_norm(std::string_view name, NormPart part) {
        const int place = writer_.norm_place(name, part);
        if (place < 0) return;
        for (const int line : writer_.program_.norms[static_cast<std::size_t>(place)])
            if (line >= 0) needer_.lines.push_back(line);
    }

    ProgramWriter& writer_;
    Needer& needer_;
};

bool ProgramWriter::StepLess::operator()(const Step& a, const Step& b) const {
    const auto key = [](const Step& step) {
        return std::tuple(step.kind, step.what, step.in, std::bit_cast<std::uint64_t>(step.number));
    };
    return key(a) < key(b);
}

ProgramWriter::ProgramWriter(int kind) {
    program_.kind = kind;
    const std::size_t named = landmark_names(kind).size();
    program_.slots = named > 0 ? named : cast_point_count;
    step({});
}

// The step, or the one of before that does the same.
StepId ProgramWriter::step(const Step& step) {
    const auto [known, is_new] = known_steps_.try_emplace(step, static_cast<StepId>(program_.steps.size()));
    if (is_new) program_.steps.push_back(step);
    return known->second;
}

StepId ProgramWriter::noted_step(const Step& what) {
    noted_.push_back(step(what));
    return noted_.back();
}

std::size_t ProgramWriter::name_place(std::string_view name) {
    const auto known = names_.find(name);
    if (known != names_.end()) return known->second;
    program_.names.emplace_back(name);
    return names_.emplace(name, names_.size()).first->second;
}

Landmarks::Found ProgramWriter::find(std::string_view name) {
    if (name.empty()) return {};
    if (const auto slot = landmark_slot(kind(), name)) return {Landmarks::Source::fixed, *slot};
    return {Landmarks::Source::user, static_cast<int>(name_place(name))};
}

StepPoint ProgramWriter::position(Landmarks::Found found) {
    if (found.source == Landmarks::Source::none) return {};
    const bool fixed = found.source == Landmarks::Source::fixed;
    return {noted_step(
        {.kind = fixed ? Step::Kind::landmark : Step::Kind::named, .in = {static_cast<StepId>(found.slot)}})};
}

StepPoint ProgramWriter::constructed(Construction construction, const std::array<Point, 4>& p, double number) {
    return {noted_step({.kind = Step::Kind::construction,
                        .what = static_cast<unsigned char>(construction),
                        .in = {p[0].id, p[1].id, p[2].id, p[3].id},
                        .number = number})};
}

StepPoint ProgramWriter::effective_a(Point n, Point a, const std::array<Point, 2>& incisor, Point u1c) {
    const StepId lean =
        noted_step({.kind = Step::Kind::incisor_lean, .in = {n.id, a.id, incisor[0].id, incisor[1].id}});
    return {noted_step({.kind = Step::Kind::effective_a, .in = {n.id, a.id, u1c.id, lean}})};
}

StepNumber ProgramWriter::measured(Measure measure, const std::array<Point, 4>& p) {
    if (measure == Measure::angle3) measure = Measure::angle1;
    if (measure == Measure::angle4) measure = Measure::angle2;
    return {noted_step({.kind = Step::Kind::measure,
                        .what = static_cast<unsigned char>(measure),
                        .in = {p[0].id, p[1].id, p[2].id, p[3].id}})};
}

StepNumber ProgramWriter::cast_measure(std::string_view token) {
    auto& tokens = program_.tokens;
    const auto known = std::ranges::find(tokens, token);
    const auto place = static_cast<StepId>(known - tokens.begin());
    if (known == tokens.end()) tokens.emplace_back(token);
    return {step({.kind = Step::Kind::cast_measure, .in = {place}})};
}

StepNumber ProgramWriter::combined(Operation operation, Number left, Number right) {
    const Step &l = program_.steps[left.id], &r = program_.steps[right.id];
    if (l.kind == Step::Kind::number && r.kind == Step::Kind::number)
        return number(tool::combined(operation, l.number, r.number));
    return {step(
        {.kind = Step::Kind::operation, .what = static_cast<unsigned char>(operation), .in = {left.id, right.id}})};
}

StepNumber ProgramWriter::first_not_zero(std::span<const Number> numbers) {
    return {step({.kind = Step::Kind::first_not_zero, .in = {list(numbers), static_cast<StepId>(numbers.size())}})};
}

StepNumber ProgramWriter::number(double number) {
    return {step({.number = number})};
}

// Where the list begins that the steps now have.
StepId ProgramWriter::list(std::span<const Number> numbers) {
    const auto begin = static_cast<StepId>(program_.lists.size());
    for (const Number number : numbers) program_.lists.push_back(number.id);
    return begin;
}

StepNumber ProgramWriter::formula(std::string_view text, bool& as_text) {
    noted_.clear();
    PointReader points(*this);
    Number values[value_list_capacity];
    int count = 0;
    Formula work(text, true, ValueList(values, &count), points);
    while (const auto asked = work.advance()) work.supply(reference(*asked));
    as_text = as_text || !takes_all(work.result().id);
    return work.result();
}

// Whether all steps that were noted for a formula are among those that its result takes. What it makes and does not use
// can be undefined all the same, which only the text tells.
bool ProgramWriter::takes_all(StepId result) const {
    std::set<StepId> met;
    std::vector<StepId> wanted{result};
    while (!wanted.empty()) {
        const StepId id = wanted.back();
        wanted.pop_back();
        if (!met.insert(id).second) continue;
        const Step& step = program_.steps[id];
        if (step.kind != Step::Kind::item) program_.each_input(step, [&](StepId input) { wanted.push_back(input); });
    }
    return std::ranges::all_of(noted_, [&](StepId id) { return met.contains(id); });
}

StepNumber ProgramWriter::reference(const Reference& reference) {
    const auto line = file_->find_item(reference.name);
    if (!line || line->rest.empty()) return {};
    const int place = item_places_.at(line->name.data());
    references_.insert({place, static_cast<int>(reference.ask)});
    const auto value = [&] { return noted_step({.kind = Step::Kind::item, .in = {static_cast<StepId>(place)}}); };
    const auto norm = [&](NormPart part) -> StepId {
        const int norm_at = norm_place(reference.name, part);
        return norm_at < 0 ? 0 : noted_step({.kind = Step::Kind::norm, .in = {static_cast<StepId>(norm_at)}});
    };
    switch (reference.ask) {
        case Ask::mean: return {norm(NormPart::mean)};
        case Ask::sd: return {norm(NormPart::sd)};
        case Ask::deviation:
            return {
                noted_step({.kind = Step::Kind::deviation, .in = {value(), norm(NormPart::mean), norm(NormPart::sd)}})};
        case Ask::value: break;
    }
    return {value()};
}

// Place of an item's mean or SD in the program's norms, -1 when it has none.
int ProgramWriter::norm_place(std::string_view name, NormPart part) {
    const auto line = [&](int sex) {
        const DefinitionFile::Lines lines = file_->find(name, DefinitionFile::Look::both, sex);
        return line_place(part == NormPart::mean ? lines.mean : lines.sd);
    };
    const Program::Norm norm{line(1), line(2)};
    if (norm == Program::Norm{-1, -1}) return -1;
    const auto [known, is_new] = norm_places_.try_emplace(norm, static_cast<int>(program_.norms.size()));
    if (is_new) program_.norms.push_back(norm);
    return known->second;
}

// Place of a norm's line; new ones are written when the items have been.
int ProgramWriter::line_place(const std::optional<NamedLine>& line) {
    if (!line) return -1;
    const auto [known, is_new] = line_places_.try_emplace(line->name.data(), static_cast<int>(lines_.size()));
    if (is_new) lines_.push_back(*line);
    return known->second;
}

void ProgramWriter::add(const DefinitionFile& file) {
    file_ = &file;
    references_.clear();
    const std::size_t first_item = program_.items.size(), first_line = lines_.size();
    std::vector<int>& places = program_.files.emplace_back();
    std::vector<NamedLine> lines;
    for (const NamedLine& item : file.items()) {
        const NamedLine line = *file.find_item(item.name);
        const auto [known, is_new] =
            item_places_.try_emplace(line.name.data(), static_cast<int>(program_.items.size()));
        places.push_back(known->second);
        if (!is_new) continue;
        program_.items.push_back({.name = line.name});
        lines.push_back(line);
    }
    item_needs_.resize(program_.items.size());
    for (std::size_t i = 0; i < lines.size(); ++i) write_item(static_cast<int>(first_item + i), lines[i]);
    for (std::size_t i = first_line; i < lines_.size(); ++i) write_norm_line(lines_[i]);
    if (references_.size() < most_evaluations) return;
    for (std::size_t i = first_item; i < program_.items.size(); ++i) program_.items[i].as_text = true;
}

void ProgramWriter::write_item(int place, const NamedLine& line) {
    Program::Item& item = program_.items[static_cast<std::size_t>(place)];
    Needer& needer = item_needs_[static_cast<std::size_t>(place)];
    NameCollector names(*this, needer);
    item.mean = norm_place(line.name, NormPart::mean);
    item.sd = norm_place(line.name, NormPart::sd);
    item.has_formula = !line.rest.empty();
    const std::string_view expression = split_type(line.rest).expression;
    const std::size_t semicolon = std::min(expression.find(';'), expression.size());
    visit_names(expression.substr(0, semicolon), names);
    needer.sure_names = needer.names.size();
    needer.sure_items = needer.items.size();
    if (!item.has_formula) return;
    item.value = formula(expression, item.as_text).id;
    if (semicolon == expression.size()) {
        // Kept: -1 is a palate that nobody has judged yet. As a selector it selects nothing, like all below 0.
        if (judges_palate(expression)) item.value = step({.kind = Step::Kind::unjudged, .in = {item.value}});
        return;
    }
    std::vector<Number> values;
    bool is_text = false;  // a quote makes a text of its alternative and of those behind it
    for (const std::string_view text : alternatives_in(expression.substr(semicolon + 1))) {
        visit_names(text, names);
        is_text = is_text || text.find('"') != std::string_view::npos;
        item.alternatives.push_back({text, is_text});
        values.push_back(is_text ? Number() : formula(text, item.as_text));
    }
    item.selector = item.value;
    item.value =
        step({.kind = Step::Kind::choice, .in = {item.selector, list(values), static_cast<StepId>(values.size())}});
}

void ProgramWriter::write_norm_line(const NamedLine& line) {
    Program::NormLine& written = program_.norm_lines.emplace_back();
    NameCollector names(*this, line_needs_.emplace_back());
    written.second_set = line.second_set();
    written.differs = norms_differ(line.rest);
    const std::vector<std::string_view> fields = norm_fields(line.rest);
    written.as_text = fields.size() > most_fields;
    for (const std::string_view text : fields) {
        if (!is_number(text)) visit_names(text, names);
        if (fields.size() > most_fields) continue;
        Program::NormField& field = written.fields.emplace_back();
        field.number = norm_of_text(text).value;
        if (field.number || text.empty()) continue;
        const auto formula_text = norm_formula(text);
        if (!formula_text) continue;
        field.formula = formula(formula_text->text, written.as_text).id;
        field.decimals = formula_text->decimals;
    }
}

Program ProgramWriter::finished() {
    arrange_steps(program_);
    collect_needs(item_needs_, line_needs_, program_);
    return std::move(program_);
}

}  // namespace tool
