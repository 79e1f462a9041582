#include "analysis/sheet_run.h"

#include <algorithm>
#include <limits>

#include "analysis/evaluation.h"
#include "analysis/missing_landmarks.h"

namespace tool {
namespace {

CString unquoted(std::string_view text) {
    const std::size_t open = text.find('"');
    if (open == std::string_view::npos) return CString(text);
    return CString(text.substr(open + 1, text.find('"', open + 1) - open - 1));
}

SheetRow row_of(double value, std::optional<double> mean, std::optional<double> sd) {
    SheetRow row;
    row.value = value;
    row.has_mean = mean.has_value();
    row.mean = mean.value_or(0.0);
    row.has_sd = sd.has_value();
    row.sd = sd.value_or(0.0);
    if (row.has_mean) row.deviation = deviation(row.value, row.mean, row.sd);
    return row;
}

}  // namespace

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
    return Place{body->file, *line, number, program_.items[static_cast<std::size_t>(number)]};
}

SheetRow SheetRun::row(int sheet, int index, int sex, int band) {
    const auto at = place(sheet, index);
    if (!at || !at->item.has_formula) return {};
    if (served_ && !at->item.as_text) {
        const ProgramRun::Result result = run_.item(at->number, sex, band);
        if (!result.rests_on_norms && (!result.suspect || run_.lacks_some_for(at->number))) {
            SheetRow row = row_of(result.value, result.mean, result.sd);
            row.norm_needs_band = result.norm_needs_band;
            row.is_text = result.alternative && result.alternative->is_text;
            if (row.is_text) row.text = unquoted(result.alternative->text);
            return row;
        }
    }
    return row_by_text(sheet, *at, sex, band);
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

SheetRow SheetRun::row_by_text(int sheet, const Place& at, int sex, int band) {
    const auto result =
        by_text(sheet, sex, band, [&](Text& text) { return text.evaluation.item(at.line.name, Ask::deviation); });
    if (!result) return {};
    SheetRow row = row_of(result->value, result->mean.value, result->sd.value);
    row.is_text = result->is_text;
    if (row.is_text) row.text = unquoted(result->alternative);
    row.needs_band = result->needs_band;
    row.norm_needs_band = result->norm_needs_band;
    if (const auto& degeneracy = result->degeneracy) {
        (degeneracy->parallel ? row.parallel : row.at_one_place) = true;
        row.degenerate[0] = CString(degeneracy->first);
        row.degenerate[1] = CString(degeneracy->second);
    }
    return row;
}

bool SheetRun::has_all(const Place& at, SheetPart part, int sex) const {
    if (!served_) return false;
    if (part == SheetPart::value) return run_.has_all_for(at.number);
    return run_.has_all_for_norm(part == SheetPart::mean ? at.item.mean : at.item.sd, sex);
}

CStringArray SheetRun::missing(int sheet, int index, SheetPart part, int sex, int band) {
    CStringArray missing;
    const auto at = place(sheet, index);
    if (!at || has_all(*at, part, sex)) return missing;
    const auto names = by_text(sheet, sex, band, [&](Text& text) {
        return part == SheetPart::value
                   ? text.missing.for_item(at->line.name)
                   : text.missing.for_norm(at->line.name, part == SheetPart::mean ? NormPart::mean : NormPart::sd);
    });
    for (const std::string& name : names) missing.Add(name.c_str());
    return missing;
}

bool SheetRun::lacks(int sheet, int index, SheetPart part, int sex, int band) {
    const auto at = place(sheet, index);
    if (!at || has_all(*at, part, sex)) return false;
    if (served_ && part == SheetPart::value && run_.lacks_some_for(at->number)) return true;
    return !missing(sheet, index, part, sex, band).IsEmpty();
}

}  // namespace tool
