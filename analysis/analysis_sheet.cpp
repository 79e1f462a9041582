#include "AnalysisSheet.h"

#include <optional>

#include "analysis/evaluation.h"
#include "analysis/face.h"
#include "analysis/growth_stage.h"
#include "analysis/norm_text.h"
#include "analysis/sheet_run.h"
#include "platform/system.h"

using tool::Ask;
using tool::NormPart;
using tool::or_failed;
using tool::text_or_empty;

namespace {

// What `make` makes; null without the memory for it.
template <class Make>
std::shared_ptr<const tool::SheetBody> made_or_null(Make&& make) {
    return or_failed(std::shared_ptr<const tool::SheetBody>(), std::forward<Make>(make));
}

// A record measured with the text of a sheet.
struct Measurement {
    Measurement(const tool::SheetBody& body, const SheetSubject& s)
        : evaluation([&body] { return &body.file; },
                     landmarks.emplace(body.kind, s.record, s.kCount, s.kPoints, s.uCount), s.sex, s.band) {
        landmarks->set_steps(s.steps);
        landmarks->set_cast_decimals(body.cast_decimals);
    }

    std::optional<tool::Landmarks> landmarks;
    tool::Evaluation evaluation;
};

}  // namespace

const tool::SheetBody* tool::body_of(const AnalysisSheet& sheet) {
    return sheet.body_.get();
}

AnalysisSheet::AnalysisSheet(int kind, const char* path, int cast_decimals)
    : kind_(kind), body_(made_or_null([&]() -> std::shared_ptr<const tool::SheetBody> {
          auto text = path ? tool::read_file(path, tool::largest_text_file) : std::nullopt;
          return text ? std::make_shared<tool::SheetBody>(kind, *std::move(text), cast_decimals) : nullptr;
      })) {}

AnalysisSheet::AnalysisSheet(int kind, const char* text, std::size_t size, int cast_decimals)
    : kind_(kind), body_(made_or_null([&] {
          return std::make_shared<const tool::SheetBody>(kind, std::string(text ? text : "", text ? size : 0),
                                                         cast_decimals);
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

CString AnalysisSheet::Population() const {
    return or_failed(CString(), [&] { return body_ ? CString(body_->sample.population) : CString(); });
}

CString AnalysisSheet::VariantOf() const {
    return or_failed(CString(), [&] { return body_ ? CString(body_->sample.variant_of) : CString(); });
}

CString AnalysisSheet::Japanese(const char* name) const {
    return or_failed(CString(), [&] {
        return body_ ? CString(tool::Sample::of(body_->sample.japanese, text_or_empty(name))) : CString();
    });
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
    return body_ ? static_cast<int>(body_->lines.size()) : 0;
}

SheetItem AnalysisSheet::GetItem(int index) const {
    if (!body_ || !body_->line(index)) return {};
    return or_failed(SheetItem(), [&] { return body_->items()[static_cast<std::size_t>(index)]; });
}

SheetRow AnalysisSheet::Evaluate(int index, const SheetSubject& subject) const {
    if (!body_) return {};
    return or_failed(tool::failed_row(), [&] {
        tool::SheetRun run({&body_, 1}, body_->program());
        run.begin(subject);
        return run.row(0, index, subject.sex, subject.band);
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
    if (!body_) return {};
    return tool::missing_or_unnamed([&] {
        tool::SheetRun run({&body_, 1}, body_->program());
        run.begin(subject);
        return run.missing(0, index, part, subject.sex, subject.band);
    });
}
