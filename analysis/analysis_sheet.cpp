#include "AnalysisSheet.h"

#include "analysis/catalogue.h"
#include "analysis/evaluation.h"
#include "analysis/face.h"
#include "analysis/formula_unit.h"
#include "analysis/item_text.h"
#include "analysis/missing_landmarks.h"
#include "analysis/norm_text.h"
#include "platform/system.h"

using tool::Ask;
using tool::NormPart;
using tool::or_failed;
using tool::text_or_empty;

struct AnalysisSheet::Body {
    Body(int its_kind, std::optional<std::string> text)
        : kind(its_kind), loaded(text.has_value()), file(std::move(text).value_or("")), items(file.items()) {
        file.build_index();
    }

    const tool::NamedLine* item(int index) const {
        return index >= 0 && index < static_cast<int>(items.size()) ? &items[index] : nullptr;
    }

    int kind;
    bool loaded;
    tool::DefinitionFile file;
    std::vector<tool::NamedLine> items;
};

namespace {

// One record measured with a sheet.
struct Subject {
    Subject(int kind, const tool::DefinitionFile& file, const SheetSubject& s)
        : landmarks(kind, s.record, s.kCount, s.kPoints, s.uCount),
          evaluation([&file] { return &file; }, landmarks, s.sex, s.band) {}

    tool::Landmarks landmarks;
    tool::Evaluation evaluation;
};

CString unquoted(std::string_view text) {
    const std::size_t open = text.find('"');
    if (open == std::string_view::npos) return CString(text);
    return CString(text.substr(open + 1, text.find('"', open + 1) - open - 1));
}

}  // namespace

AnalysisSheet::AnalysisSheet(int kind, const char* path)
    : body_(std::make_unique<Body>(kind, path ? tool::read_file(path, tool::largest_text_file) : std::nullopt)) {}

AnalysisSheet::AnalysisSheet(int kind, const char* text, std::size_t size)
    : body_(std::make_unique<Body>(kind, std::string(text ? text : "", text ? size : 0))) {}

AnalysisSheet::AnalysisSheet(AnalysisSheet&&) noexcept = default;
AnalysisSheet& AnalysisSheet::operator=(AnalysisSheet&&) noexcept = default;
AnalysisSheet::~AnalysisSheet() = default;

bool AnalysisSheet::IsLoaded() const {
    return body_->loaded;
}

int AnalysisSheet::Kind() const {
    return body_->kind;
}

CString AnalysisSheet::Title() const {
    return CString(body_->file.title());
}

CString AnalysisSheet::Comment() const {
    return CString(body_->file.comment());
}

int AnalysisSheet::GetCount() const {
    return static_cast<int>(body_->items.size());
}

SheetItem AnalysisSheet::GetItem(int index) const {
    SheetItem item;
    if (const tool::NamedLine* line = body_->item(index)) {
        const tool::TypedExpression typed = tool::split_type(line->rest);
        item.name = CString(line->name);
        item.expression = CString(typed.expression);
        item.unit = CString(tool::unit_of_item(body_->file, line->name));
        item.column = typed.type.column;
        item.mode = typed.type.mode;
        item.second = line->second_set();
        item.heading = !line->rest.data();
    }
    return item;
}

SheetRow AnalysisSheet::Evaluate(int index, const SheetSubject& subject) const {
    SheetRow row;
    const tool::NamedLine* line = body_->item(index);
    if (!line) return row;
    Subject measured(body_->kind, body_->file, subject);
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
    return row;
}

double AnalysisSheet::Calc_1(int mode, const char* name, const SheetSubject& subject, double, double* valueOut,
                             double* sdOut) const {
    if (mode < 0 || mode > static_cast<int>(Ask::sd)) return 0.0;
    return or_failed(0.0, [&] {
        Subject measured(body_->kind, body_->file, subject);
        const auto result = measured.evaluation.item(text_or_empty(name), Ask{mode});
        return result ? tool::item_outputs(*result, Ask{mode}, valueOut, sdOut) : 0.0;
    });
}

CString AnalysisSheet::Get_MeanSD(const char* name, int which, const SheetSubject& subject, double,
                                  int keepDecimals) const {
    return or_failed(CString(), [&] {
        Subject measured(body_->kind, body_->file, subject);
        const NormPart part = which == 0 ? NormPart::mean : NormPart::sd;
        return CString(tool::norm_text(measured.evaluation.norm(text_or_empty(name), part), keepDecimals != 0));
    });
}

CStringArray AnalysisSheet::Missing(int index, SheetPart part, const SheetSubject& subject) const {
    CStringArray missing;
    const tool::NamedLine* line = body_->item(index);
    if (!line) return missing;
    tool::Landmarks landmarks(body_->kind, subject.record, subject.kCount, subject.kPoints, subject.uCount);
    const tool::DefinitionFile& file = body_->file;
    const auto names = part == SheetPart::value
                           ? tool::missing_for_item(line->name, file, landmarks, subject.sex, subject.band)
                           : tool::missing_for_norm(line->name, part == SheetPart::mean ? NormPart::mean : NormPart::sd,
                                                    file, landmarks, subject.sex, subject.band);
    for (const std::string& name : names) missing.Add(name.c_str());
    return missing;
}
