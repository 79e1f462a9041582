#include "MeasuredAnalysis.h"

#include <algorithm>
#include <cmath>

#include "SheetMeasurer.h"
#include "analysis/evaluation.h"
#include "analysis/result_text.h"
#include "analysis/sheet_body.h"
#include "platform/code_page.h"

namespace tool {
namespace {

std::string utf8(const CString& text) {
    return utf8_from_code_page(text.View());
}

std::vector<std::string> utf8(const CStringArray& list) {
    std::vector<std::string> texts;
    for (INT_PTR i = 0; i < list.GetSize(); ++i) texts.push_back(utf8(list.GetAt(i)));
    return texts;
}

std::optional<double> number(bool has, double value) {
    return has ? std::optional(value) : std::nullopt;
}

MeasuredItem measured(const Item& item, const ResultRow& row) {
    return {.item = &item,
            .state = row.state,
            .value = number(row.state == ResultState::value, row.value),
            .mean = number(row.hasMean, row.mean),
            .sd = number(row.hasSd, row.sd),
            .deviation = number(row.hasDeviation, row.deviation),
            .value_text = utf8(row.valueText),
            .mean_text = utf8(row.meanText),
            .sd_text = utf8(row.sdText),
            .deviation_text = utf8(row.deviationText),
            .stars = utf8(row.stars),
            .missing = utf8(row.missing),
            .norm_missing = utf8(row.normMissing),
            .degenerate = {utf8(row.degenerate[0]), utf8(row.degenerate[1])},
            .error = {},
            .shapes = {}};
}

int decimals_of(const std::string& number) {
    const std::size_t point = number.find('.');
    return point == std::string::npos ? 0 : static_cast<int>(number.size() - point - 1);
}

ValueError value_error(const SheetError& error, const MeasuredItem& item) {
    ValueError told{.state = error.state,
                    .value = error.value,
                    .deviation = number(item.deviation.has_value(), error.deviation),
                    .text = {},
                    .mostly = utf8(error.mostly),
                    .share = error.share,
                    .without = utf8(error.without),
                    .assumed = utf8(error.assumed)};
    if (error.state == ErrorState::known) told.text = number_text(error.value, decimals_of(item.value_text));
    return told;
}

bool has_point(const MeasuredShape& shape, const FilmPoint& point) {
    return std::ranges::find(shape.points, point) != shape.points.end();
}

// A distance with a sign is the difference of two lengths from a point far out on their line
// (docs/formula_language.md): what a person wants to see is the distance between their other ends. Shapes that were
// needed again are left once.
void simplify(std::vector<MeasuredShape>& shapes) {
    for (auto shape = shapes.begin(); shape != shapes.end();) {
        const bool again = std::find(shapes.begin(), shape, *shape) != shape;
        shape = again ? shapes.erase(shape) : shape + 1;
    }
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        if (shapes[i].kind != ShapeKind::extension) continue;
        const FilmPoint far = shapes[i].points.back();
        std::vector<std::size_t> users;
        for (std::size_t other = 0; other < shapes.size(); ++other)
            if (other != i && has_point(shapes[other], far)) users.push_back(other);
        const auto is_length = [&](std::size_t user) { return shapes[user].kind == ShapeKind::length; };
        if (users.size() != 2 || !std::ranges::all_of(users, is_length)) continue;
        MeasuredShape& distance = shapes[users[0]];
        const auto near = [&](const MeasuredShape& length) { return length.points[length.points[0] == far ? 1 : 0]; };
        distance.points = {near(distance), near(shapes[users[1]])};
        shapes.erase(shapes.begin() + static_cast<std::ptrdiff_t>(users[1]));
        shapes.erase(shapes.begin() + static_cast<std::ptrdiff_t>(i--));
    }
}

// What the value of an item is made from.
std::vector<MeasuredShape> shapes_of(const SheetBody& sheet, const NamedLine& line, const SheetSubject& subject) {
    std::vector<MeasuredShape> shapes;
    Landmarks landmarks(sheet.kind, subject.record, subject.kCount, subject.kPoints, subject.uCount);
    landmarks.set_steps(subject.steps);
    landmarks.set_cast_decimals(sheet.cast_decimals);
    landmarks.record_shapes(&shapes);
    Evaluation([&] { return &sheet.file; }, landmarks, subject.sex, subject.band).item(line.name, Ask::value);
    simplify(shapes);
    return shapes;
}

}  // namespace

int norm_band(const Analysis& analysis, const Subject& subject) {
    constexpr int unknown = -1, most_columns = 100;
    int band = 0, weight = 1;
    for (const StageSet set : {StageSet::first, StageSet::second}) {
        const bool men = !analysis.stages(set, Sex::male).empty(), women = !analysis.stages(set, Sex::female).empty();
        if (!subject.sex && men != women) return unknown;
        std::optional<int> place;  // of each sex that the patient may have
        for (const Sex sex : {Sex::male, Sex::female}) {
            const std::span<const Stage> stages = analysis.stages(set, sex);
            if (stages.empty() || (subject.sex && *subject.sex != sex)) continue;
            for (const Stage& stage : stages)
                if (stage.by_age ? !subject.age_years : !subject.dental_stage) return unknown;
            const auto found = analysis.stage_of(set, sex, subject.age_years, subject.dental_stage);
            if (!found || (place && place != found)) return unknown;
            place = found;
        }
        if (place) band += weight * std::min(*place, most_columns - 1);
        weight *= most_columns;
    }
    return band;
}

bool ValueError::covers(double of_deviation) const {
    constexpr double for_95_percent = 1.96;
    return state == ErrorState::known && deviation && std::abs(of_deviation) <= for_95_percent * *deviation;
}

Result<MeasuredAnalysis> measure_all(const Analysis& analysis, const Subject& subject, Shapes shapes,
                                     const LandmarkErrors* errors) {
    Result<SubjectRecord> record = SubjectRecord::of(analysis.kind(), subject);
    if (!record) return Failure{record.reason()};
    MeasuredAnalysis all;
    all.band = subject.band ? *subject.band : norm_band(analysis, subject);
    const SheetSubject fields = record->subject(subject.sex.value_or(Sex::male), all.band);
    const ResultList list(analysis.sheet(), fields, subject.sex.has_value());
    all.norms_differ = list.NormsDiffer();
    std::optional<SheetSet> set;
    std::optional<SheetMeasurer> measurer;
    if (errors) {
        measurer.emplace(set.emplace(analysis.sheet()));
        measurer->SetErrors(*errors);
        measurer->Measure(fields);
    }
    const SheetBody* const sheet = body_of(analysis.sheet());
    for (int index = 0; index < list.GetCount(); ++index) {
        const ResultRow& row = list.GetRow(index);
        MeasuredItem& item = all.items.emplace_back(measured(analysis.items()[static_cast<std::size_t>(index)], row));
        if (measurer && item.value) item.error = value_error(measurer->Error(0, index, fields.sex, fields.band), item);
        if (shapes == Shapes::wanted && item.has_result()) item.shapes = shapes_of(*sheet, *sheet->line(index), fields);
    }
    return all;
}

}  // namespace tool
