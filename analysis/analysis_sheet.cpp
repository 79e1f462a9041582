#include "AnalysisSheet.h"

#include <limits>

#include "analysis/catalogue.h"
#include "analysis/evaluation.h"
#include "analysis/face.h"
#include "analysis/formula_unit.h"
#include "analysis/growth_stage.h"
#include "analysis/item_text.h"
#include "analysis/landmark_names.h"
#include "analysis/measures.h"
#include "analysis/missing_landmarks.h"
#include "analysis/norm_text.h"
#include "analysis/sample.h"
#include "platform/system.h"

using tool::Ask;
using tool::NormPart;
using tool::or_failed;
using tool::text_or_empty;

struct AnalysisSheet::Body {
    Body(int its_kind, std::string text)
        : kind(its_kind), file(std::move(text)), items(file.items()), sample(tool::sample_of(file.text())) {
        file.build_index();
        if (tool::is_cast(kind)) cast_decimals = tool::cast_decimals();
    }

    const tool::NamedLine* item(int index) const {
        return index >= 0 && index < static_cast<int>(items.size()) ? &items[index] : nullptr;
    }

    int kind;
    tool::DefinitionFile file;
    std::vector<tool::NamedLine> items;
    tool::Sample sample;
    std::optional<int> cast_decimals;
};

struct SheetMeasurement::Body {
    Body(const AnalysisSheet::Body& its_sheet, const SheetSubject& s)
        : sheet(its_sheet),
          landmarks(sheet.kind, s.record, s.kCount, s.kPoints, s.uCount),
          evaluation([this] { return &sheet.file; }, landmarks, s.sex, s.band),
          missing(sheet.file, evaluation, s.sex, s.band) {
        landmarks.set_steps(s.steps);
        landmarks.set_cast_decimals(sheet.cast_decimals);
    }

    const AnalysisSheet::Body& sheet;
    tool::Landmarks landmarks;
    tool::Evaluation evaluation;
    tool::MissingLandmarks missing;
};

namespace {

// What `make` makes; null without the memory for it.
template <class Made, class Make>
std::unique_ptr<Made> made_or_null(Make&& make) {
    return or_failed(std::unique_ptr<Made>(), std::forward<Make>(make));
}

CString unquoted(std::string_view text) {
    const std::size_t open = text.find('"');
    if (open == std::string_view::npos) return CString(text);
    return CString(text.substr(open + 1, text.find('"', open + 1) - open - 1));
}

}  // namespace

AnalysisSheet::AnalysisSheet(int kind, const char* path)
    : kind_(kind), body_(made_or_null<const Body>([&]() -> std::unique_ptr<const Body> {
          auto text = path ? tool::read_file(path, tool::largest_text_file) : std::nullopt;
          return text ? std::make_unique<Body>(kind, *std::move(text)) : nullptr;
      })) {}

AnalysisSheet::AnalysisSheet(int kind, const char* text, std::size_t size)
    : kind_(kind), body_(made_or_null<const Body>([&] {
          return std::make_unique<const Body>(kind, std::string(text ? text : "", text ? size : 0));
      })) {}

AnalysisSheet::AnalysisSheet(AnalysisSheet&&) noexcept = default;
AnalysisSheet& AnalysisSheet::operator=(AnalysisSheet&&) noexcept = default;
AnalysisSheet::~AnalysisSheet() = default;

bool AnalysisSheet::IsLoaded() const {
    return body_ != nullptr;
}

int AnalysisSheet::Kind() const {
    return kind_;
}

CString AnalysisSheet::Title() const {
    return or_failed(CString(), [&] { return body_ ? CString(body_->file.title()) : CString(); });
}

CString AnalysisSheet::Comment() const {
    return or_failed(CString(), [&] { return body_ ? CString(body_->file.comment()) : CString(); });
}

SheetAges AnalysisSheet::Ages() const {
    if (!body_ || !body_->sample.ages) return {};
    return {true, body_->sample.ages->from, body_->sample.ages->to.value_or(-1)};
}

std::vector<SheetStage> AnalysisSheet::Stages(int sex, bool second) const {
    if (!body_) return {};
    return or_failed(std::vector<SheetStage>(), [&] {
        std::vector<SheetStage> stages;
        tool::for_each_stage(body_->file.text(), sex, second, [&](const tool::StageLine& line) {
            const tool::StageRange range =
                line.by_age ? tool::age_range(line.range, tool::ZeroBound::open_above_a_nonzero_start)
                            : tool::dental_range(line.range);
            stages.push_back({CString(line.name), line.by_age, range.from, range.to});
        });
        return stages;
    });
}

int AnalysisSheet::GetCount() const {
    return body_ ? static_cast<int>(body_->items.size()) : 0;
}

SheetItem AnalysisSheet::GetItem(int index) const {
    const tool::NamedLine* line = body_ ? body_->item(index) : nullptr;
    if (!line) return {};
    return or_failed(SheetItem(), [&] {
        const tool::TypedExpression typed = tool::split_type(line->rest);
        const auto& signs = body_->sample.signs;
        const auto sign = signs.find(line->name);
        return SheetItem{.name = CString(line->name),
                         .expression = CString(typed.expression),
                         .unit = CString(tool::unit_of_item(body_->file, line->name)),
                         .column = typed.type.column,
                         .mode = typed.type.mode,
                         .second = line->second_set(),
                         .heading = !line->rest.data(),
                         .sign = CString(sign == signs.end() ? std::string_view() : sign->second)};
    });
}

SheetRow AnalysisSheet::Evaluate(int index, const SheetSubject& subject) const {
    return SheetMeasurement(*this, subject).Evaluate(index);
}

double AnalysisSheet::Calc_1(int mode, const char* name, const SheetSubject& subject, double, double* valueOut,
                             double* sdOut) const {
    if (!body_ || mode < 0 || mode > static_cast<int>(Ask::sd)) return 0.0;
    return or_failed(0.0, [&] {
        SheetMeasurement::Body measured(*body_, subject);
        const auto result = measured.evaluation.item(text_or_empty(name), Ask{mode});
        return result ? tool::item_outputs(*result, Ask{mode}, valueOut, sdOut) : 0.0;
    });
}

CString AnalysisSheet::Get_MeanSD(const char* name, int which, const SheetSubject& subject, double,
                                  int keepDecimals) const {
    if (!body_) return {};
    return or_failed(CString(), [&] {
        SheetMeasurement::Body measured(*body_, subject);
        const NormPart part = which == 0 ? NormPart::mean : NormPart::sd;
        return CString(tool::norm_text(measured.evaluation.norm(text_or_empty(name), part), keepDecimals != 0));
    });
}

CStringArray AnalysisSheet::Missing(int index, SheetPart part, const SheetSubject& subject) const {
    return SheetMeasurement(*this, subject).Missing(index, part);
}

SheetMeasurement::SheetMeasurement(const AnalysisSheet& sheet, const SheetSubject& subject)
    : sheet_(sheet), subject_(subject) {}

SheetMeasurement::~SheetMeasurement() = default;

// Begins anew behind a failure, since a walk that was broken off has left its marks.
template <class Work>
bool SheetMeasurement::done(Work&& work) {
    const bool did = or_failed(false, [&] {
        if (!body_) body_ = std::make_unique<Body>(*sheet_.body_, subject_);
        return work(*body_), true;
    });
    if (!did) body_.reset();
    return did;
}

SheetRow SheetMeasurement::Evaluate(int index) {
    SheetRow row;
    const tool::NamedLine* line = sheet_.body_ ? sheet_.body_->item(index) : nullptr;
    if (!line) return row;
    const bool did = done([&](Body& measured) {
        const auto result = measured.evaluation.item(line->name, Ask::deviation);
        if (!result) return;
        row.value = result->value;
        row.has_mean = result->mean.value.has_value();
        row.mean = result->mean.value.value_or(0.0);
        row.has_sd = result->sd.value.has_value();
        row.sd = result->sd.value.value_or(0.0);
        if (row.has_mean) row.deviation = result->asked(Ask::deviation);
        row.is_text = result->is_text;
        if (row.is_text) row.text = unquoted(result->alternative);
        row.needs_band = result->needs_band;
        row.norm_needs_band = result->norm_needs_band;
        if (const auto& degeneracy = result->degeneracy) {
            (degeneracy->parallel ? row.parallel : row.at_one_place) = true;
            row.degenerate[0] = CString(degeneracy->first);
            row.degenerate[1] = CString(degeneracy->second);
        }
    });
    if (did) return row;
    row = {};
    row.value = std::numeric_limits<double>::quiet_NaN();
    return row;
}

CStringArray SheetMeasurement::Missing(int index, SheetPart part) {
    CStringArray missing;
    const tool::NamedLine* line = sheet_.body_ ? sheet_.body_->item(index) : nullptr;
    if (!line) return missing;
    const bool did = done([&](Body& measured) {
        const auto names =
            part == SheetPart::value
                ? measured.missing.for_item(line->name)
                : measured.missing.for_norm(line->name, part == SheetPart::mean ? NormPart::mean : NormPart::sd);
        for (const std::string& name : names) missing.Add(name.c_str());
    });
    if (did) return missing;
    missing.RemoveAll();
    tool::as_far_as_possible([&] { missing.Add(""); });
    return missing;
}
