#include "AnalysisSheet.h"

#include <limits>

#include "analysis/catalogue.h"
#include "analysis/evaluation.h"
#include "analysis/face.h"
#include "analysis/formula_unit.h"
#include "analysis/item_text.h"
#include "analysis/landmark_names.h"
#include "analysis/measures.h"
#include "analysis/missing_landmarks.h"
#include "analysis/norm_text.h"
#include "platform/system.h"

using tool::Ask;
using tool::NormPart;
using tool::or_failed;
using tool::text_or_empty;

struct AnalysisSheet::Body {
    Body(int its_kind, std::string text) : kind(its_kind), file(std::move(text)), items(file.items()) {
        file.build_index();
        if (tool::is_cast(kind)) cast_decimals = tool::cast_decimals();
    }

    const tool::NamedLine* item(int index) const {
        return index >= 0 && index < static_cast<int>(items.size()) ? &items[index] : nullptr;
    }

    int kind;
    tool::DefinitionFile file;
    std::vector<tool::NamedLine> items;
    std::optional<int> cast_decimals;
};

// A record as a sheet sees it.
struct AnalysisSheet::Subject {
    Subject(const Body& body, const SheetSubject& s) : landmarks(body.kind, s.record, s.kCount, s.kPoints, s.uCount) {
        landmarks.set_steps(s.steps);
        landmarks.set_cast_decimals(body.cast_decimals);
    }

    tool::Landmarks landmarks;
};

struct AnalysisSheet::Measurement : Subject {
    Measurement(const Body& body, const SheetSubject& s)
        : Subject(body, s), evaluation([&body] { return &body.file; }, landmarks, s.sex, s.band) {}

    tool::Evaluation evaluation;
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

int AnalysisSheet::GetCount() const {
    return body_ ? static_cast<int>(body_->items.size()) : 0;
}

SheetItem AnalysisSheet::GetItem(int index) const {
    const tool::NamedLine* line = body_ ? body_->item(index) : nullptr;
    if (!line) return {};
    return or_failed(SheetItem(), [&] {
        const tool::TypedExpression typed = tool::split_type(line->rest);
        return SheetItem{.name = CString(line->name),
                         .expression = CString(typed.expression),
                         .unit = CString(tool::unit_of_item(body_->file, line->name)),
                         .column = typed.type.column,
                         .mode = typed.type.mode,
                         .second = line->second_set(),
                         .heading = !line->rest.data()};
    });
}

SheetRow AnalysisSheet::Evaluate(int index, const SheetSubject& subject) const {
    const tool::NamedLine* line = body_ ? body_->item(index) : nullptr;
    if (!line) return {};
    SheetRow failed;
    failed.value = std::numeric_limits<double>::quiet_NaN();
    return or_failed(std::move(failed), [&] {
        SheetRow row;
        Measurement measured(*body_, subject);
        const auto result = measured.evaluation.item(line->name, Ask::deviation);
        if (!result) return row;
        row.value = result->value;
        row.has_mean = result->mean.value.has_value();
        row.mean = result->mean.value.value_or(0.0);
        row.has_sd = result->sd.value.has_value();
        row.sd = result->sd.value.value_or(0.0);
        if (row.has_mean) row.deviation = result->asked(Ask::deviation);
        row.is_text = result->is_text;
        if (row.is_text) row.text = unquoted(result->alternative);
        if (const auto& degeneracy = result->degeneracy) {
            (degeneracy->parallel ? row.parallel : row.at_one_place) = true;
            row.degenerate[0] = CString(degeneracy->first);
            row.degenerate[1] = CString(degeneracy->second);
        }
        return row;
    });
}

double AnalysisSheet::Calc_1(int mode, const char* name, const SheetSubject& subject, double, double* valueOut,
                             double* sdOut) const {
    if (!body_ || mode < 0 || mode > static_cast<int>(Ask::sd)) return 0.0;
    return or_failed(0.0, [&] {
        Measurement measured(*body_, subject);
        const auto result = measured.evaluation.item(text_or_empty(name), Ask{mode});
        return result ? tool::item_outputs(*result, Ask{mode}, valueOut, sdOut) : 0.0;
    });
}

CString AnalysisSheet::Get_MeanSD(const char* name, int which, const SheetSubject& subject, double,
                                  int keepDecimals) const {
    if (!body_) return {};
    return or_failed(CString(), [&] {
        Measurement measured(*body_, subject);
        const NormPart part = which == 0 ? NormPart::mean : NormPart::sd;
        return CString(tool::norm_text(measured.evaluation.norm(text_or_empty(name), part), keepDecimals != 0));
    });
}

CStringArray AnalysisSheet::Missing(int index, SheetPart part, const SheetSubject& subject) const {
    const tool::NamedLine* line = body_ ? body_->item(index) : nullptr;
    if (!line) return {};
    CStringArray missing;
    const bool told = or_failed(false, [&] {
        Subject lacking(*body_, subject);
        const tool::DefinitionFile& file = body_->file;
        const auto names =
            part == SheetPart::value
                ? tool::missing_for_item(line->name, file, lacking.landmarks, subject.sex, subject.band)
                : tool::missing_for_norm(line->name, part == SheetPart::mean ? NormPart::mean : NormPart::sd, file,
                                         lacking.landmarks, subject.sex, subject.band);
        for (const std::string& name : names) missing.Add(name.c_str());
        return true;
    });
    if (told) return missing;
    missing.RemoveAll();
    tool::as_far_as_possible([&] { missing.Add(""); });
    return missing;
}
