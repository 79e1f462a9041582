#include "analysis/sheet_run.h"

#include <algorithm>
#include <limits>

#include "analysis/evaluation.h"
#include "analysis/missing_landmarks.h"

namespace tool {

std::string_view unquoted(std::string_view text) {
    const std::size_t open = text.find('"');
    if (open == std::string_view::npos) return text;
    return text.substr(open + 1, text.find('"', open + 1) - open - 1);
}

double deviation_of(const SheetRun::Found& found) {
    return found.mean ? deviation(found.value, *found.mean, found.sd.value_or(0.0)) : 0.0;
}

SheetRow failed_row() {
    SheetRow row;
    row.value = std::numeric_limits<double>::quiet_NaN();
    return row;
}

struct SheetRun::Text {
    Text(const SheetRun& run, const DefinitionFile& its_file, int its_sex, int its_band)
        : file(its_file),
          sex(its_sex),
          band(its_band),
          landmarks(run.program_.kind, run.subject_.record, run.subject_.kCount, run.subject_.kPoints,
                    run.subject_.uCount),
          evaluation([this] { return &file; }, landmarks, sex, band),
          missing(file, evaluation, sex, band) {
        run.settle(landmarks);
    }

    const DefinitionFile& file;
    int sex, band;
    Landmarks landmarks;
    Evaluation evaluation;
    MissingLandmarks missing;
};

SheetRun::SheetRun(Sheets sheets, const Program& program)
    : sheets_(sheets), program_(program), run_(program), texts_(2 * sheets.size()) {}
SheetRun::~SheetRun() = default;

void SheetRun::begin(const SheetSubject& subject) {
    subject_ = subject;
    for (auto& text : texts_) text.reset();
    settle(landmarks_.emplace(program_.kind, subject.record, subject.kCount, subject.kPoints, subject.uCount));
    served_ = run_.begin(*landmarks_);
    gradient_begun_ = false;
}

void SheetRun::settle(Landmarks& landmarks) const {
    landmarks.set_steps(subject_.steps);
    const auto first = std::ranges::find_if(sheets_, [](const auto& sheet) { return sheet != nullptr; });
    if (first != sheets_.end()) landmarks.set_cast_decimals((*first)->cast_decimals);
}

void SheetRun::compute_all() {
    if (served_) run_.run();
}

std::optional<SheetRun::Place> SheetRun::place(int sheet, int index) const {
    if (!landmarks_ || sheet < 0 || sheet >= static_cast<int>(sheets_.size())) return std::nullopt;
    const auto& body = sheets_[static_cast<std::size_t>(sheet)];
    const NamedLine* line = body ? body->line(index) : nullptr;
    if (!line) return std::nullopt;
    const int number = program_.files[static_cast<std::size_t>(sheet)][static_cast<std::size_t>(index)];
    return Place{sheet, *line, number, program_.items[static_cast<std::size_t>(number)]};
}

SheetRun::Found SheetRun::found(const Place& at, int sex, int band) {
    if (!at.item.has_formula) return {};
    if (served_ && !at.item.as_text) {
        const ProgramRun::Result result = run_.item(at.number, sex, band);
        if (!result.rests_on_norms && (!result.suspect || run_.lacks_some_for(at.number))) {
            Found found{
                .value = result.value, .mean = result.mean, .sd = result.sd, .norm_needs_band = result.norm_needs_band};
            if (result.alternative && result.alternative->is_text) found.text = result.alternative->text;
            return found;
        }
    }
    return found_by_text(at, sex, band);
}

void SheetRun::set_errors(const LandmarkErrors& errors) {
    if (!gradient_) gradient_.emplace(program_, run_);
    gradient_->set_errors(errors);
}

SheetError SheetRun::error(const Place& at, int sex, int band) {
    SheetError told;
    if (!gradient_ || !served_ || !at.item.has_formula || at.item.as_text) return told;
    const ProgramRun::Result result = run_.item(at.number, sex, band);
    if (result.rests_on_norms || result.suspect || result.alternative_is_text()) return told;
    if (!gradient_begun_) gradient_->begin(*landmarks_);
    gradient_begun_ = true;
    const ProgramGradient::Error error = gradient_->error(at.number, result, sex, band);
    told.state = error.state;
    told.value = error.value;
    told.deviation = error.deviation;
    if (error.mostly != no_step) told.mostly = CString(gradient_->name(error.mostly));
    told.share = error.share;
    for (const StepId landmark : error.without) told.without.Add(CString(gradient_->name(landmark)));
    for (const StepId landmark : error.assumed) told.assumed.Add(CString(gradient_->name(landmark)));
    return told;
}

SheetRow SheetRun::row(int sheet, int index, int sex, int band) {
    SheetRow row;
    const auto at = place(sheet, index);
    if (!at) return row;
    const Found item = found(*at, sex, band);
    row.value = item.value;
    row.has_mean = item.mean.has_value();
    row.mean = item.mean.value_or(0.0);
    row.has_sd = item.sd.has_value();
    row.sd = item.sd.value_or(0.0);
    row.deviation = deviation_of(item);
    row.is_text = item.text.has_value();
    if (row.is_text) row.text = CString(unquoted(*item.text));
    row.needs_band = item.needs_band;
    row.norm_needs_band = item.norm_needs_band;
    if (const auto& degeneracy = item.degeneracy) {
        (degeneracy->parallel ? row.parallel : row.at_one_place) = true;
        row.degenerate[0] = CString(degeneracy->first);
        row.degenerate[1] = CString(degeneracy->second);
    }
    return row;
}

// Begins anew for another sex or band, and behind a failure, since a walk that was broken off has left its marks.
template <class Work>
auto SheetRun::by_text(int sheet, int sex, int band, Work&& work) {
    std::unique_ptr<Text>& text = texts_[2 * static_cast<std::size_t>(sheet) + (sex == 1 ? 1 : 0)];
    if (!text || text->sex != sex || text->band != band)
        text = std::make_unique<Text>(*this, sheets_[static_cast<std::size_t>(sheet)]->file, sex, band);
    try {
        return work(*text);
    } catch (...) {
        text.reset();
        throw;
    }
}

SheetRun::Found SheetRun::found_by_text(const Place& at, int sex, int band) {
    auto result =
        by_text(at.sheet, sex, band, [&](Text& text) { return text.evaluation.item(at.line.name, Ask::deviation); });
    if (!result) return {};
    Found found{.value = result->value,
                .mean = result->mean.value,
                .sd = result->sd.value,
                .needs_band = result->needs_band,
                .norm_needs_band = result->norm_needs_band,
                .degeneracy = std::move(result->degeneracy)};
    if (result->is_text) found.text = result->alternative;
    return found;
}

bool SheetRun::has_all(const Place& at, SheetPart part, int sex) const {
    if (!served_) return false;
    if (part == SheetPart::value) return run_.has_all_for(at.number);
    return run_.has_all_for_norm(part == SheetPart::mean ? at.item.mean : at.item.sd, sex);
}

std::vector<std::string> SheetRun::missing(const Place& at, SheetPart part, int sex, int band) {
    if (has_all(at, part, sex)) return {};
    return by_text(at.sheet, sex, band, [&](Text& text) {
        return part == SheetPart::value
                   ? text.missing.for_item(at.line.name)
                   : text.missing.for_norm(at.line.name, part == SheetPart::mean ? NormPart::mean : NormPart::sd);
    });
}

CStringArray SheetRun::missing(int sheet, int index, SheetPart part, int sex, int band) {
    CStringArray names;
    if (const auto at = place(sheet, index))
        for (const std::string& name : missing(*at, part, sex, band)) names.Add(name.c_str());
    return names;
}

bool SheetRun::lacks(const Place& at, SheetPart part, int sex, int band) {
    if (has_all(at, part, sex)) return false;
    if (served_ && part == SheetPart::value && run_.lacks_some_for(at.number)) return true;
    return !missing(at, part, sex, band).empty();
}

}  // namespace tool
