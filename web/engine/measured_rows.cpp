#include "web/engine/measured_rows.h"

#include <CodePage.h>
#include <NumberTexts.h>

#include <algorithm>
#include <limits>

#include "base/wording.h"
#include "cases/case_record.h"
#include "results/names.h"

namespace engine {
namespace {

using cephtool::Analysis;
using cephtool::Case;
using cephtool::Error;
using cephtool::ExitCode;
using cephtool::Remark;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
// What does not change from one of these scales to the other is the same at any scale. Powers of two: angles and ratios
// keep their bits.
constexpr double tiny_scale = 0x1p-17, huge_scale = 0x1p17;

constexpr int male = 1, female = 2;

std::string shown(const CString& text) {
    return cephtool::printable(Utf8FromCodePage932(text));
}

// Of a row that was measured at two scales.
void keep_what_needs_no_scale(ResultNumbers& found, const ResultNumbers& at_other_scale) {
    for (const auto norm : {&ResultNumbers::mean, &ResultNumbers::sd})
        if (found.*norm != at_other_scale.*norm) found.*norm = found.deviation = std::nullopt;
    if (found.state == at_other_scale.state && found.value == at_other_scale.value && found.text == at_other_scale.text)
        return;
    found.state = no_scale;
    found.value = found.deviation = std::nullopt;
}

std::vector<const AnalysisSheet*> sheets_of(const ChosenRows& rows) {
    std::vector<const AnalysisSheet*> sheets;
    for (const Analysis* analysis : rows.analyses()) sheets.push_back(&analysis->sheet());
    return sheets;
}

}  // namespace

MeasuredRows::MeasuredRows(ChosenRows rows)
    : rows_(std::move(rows)), sheets_(sheets_of(rows_)), his_(sheets_), hers_(sheets_) {}

void MeasuredRows::changed_patient() {
    bands_.clear();
    changed();
}

const std::vector<cephtool::NormBand>& MeasuredRows::bands(const Case& record) {
    if (bands_.empty())
        for (const Analysis* analysis : rows_.analyses()) bands_.push_back(cephtool::norm_band(*analysis, record, {}));
    return bands_;
}

// As the library's result list makes its rows. The case has a scale.
void MeasuredRows::measure_scaled(const Case& record, std::vector<ResultNumbers>& found) {
    found.assign(rows_.count(), {});
    if (rows_.count() == 0) return;
    const tool::Subject subject = cephtool::subject_of(record);
    auto subject_record = tool::SubjectRecord::of(static_cast<tool::Kind>(record.kind), subject);
    if (!subject_record) throw Error(ExitCode::bad_input, subject_record.reason());
    subject_ = *std::move(subject_record);
    const SheetSubject fields = subject_->subject(tool::Sex::male, 0);
    const int sex = record.sex ? static_cast<int>(*record.sex) : male;
    his_.Measure(fields);
    if (!record.sex) hers_.Measure(fields);
    for (std::size_t row = 0; row < rows_.count(); ++row) {
        const tool::Item& item = rows_.item(row);
        if (item.heading) found[row].state = ResultState::heading;
        if (item.formula.empty()) {
            if (!item.heading) found[row].state = ResultState::no_formula;
            continue;
        }
        const int sheet = static_cast<int>(rows_[row].analysis), band = bands_[rows_[row].analysis].code;
        found[row] = ResultList::Numbers(his_, sheet, rows_[row].item, sex, band);
        if (record.sex) continue;
        const ResultNumbers hers = ResultList::Numbers(hers_, sheet, rows_[row].item, female, band);
        norms_differ_ = norms_differ_ || !found[row].HasSameNorms(hers);
        found[row] = ResultList::Common(found[row], hers);
    }
}

const Numbers& MeasuredRows::measure(const Case& record) {
    if (is_measured_) return numbers_;
    bands(record);
    norms_differ_ = false;
    if (record.mm_per_pixel) {
        measure_scaled(record, found_);
    } else {
        Case scaled = record;
        scaled.mm_per_pixel = tiny_scale;
        measure_scaled(scaled, found_);
        scaled.mm_per_pixel = huge_scale;
        measure_scaled(scaled, at_other_scale_);
        for (std::size_t row = 0; row < rows_.count(); ++row)
            keep_what_needs_no_scale(found_[row], at_other_scale_[row]);
    }
    const auto column = [&](std::vector<double>& numbers, std::optional<double> ResultNumbers::*which) {
        numbers.clear();
        for (const ResultNumbers& found : found_) numbers.push_back((found.*which).value_or(nan));
    };
    column(numbers_.value, &ResultNumbers::value);
    column(numbers_.mean, &ResultNumbers::mean);
    column(numbers_.sd, &ResultNumbers::sd);
    column(numbers_.deviation, &ResultNumbers::deviation);
    numbers_.state.clear();
    for (const ResultNumbers& found : found_) numbers_.state.push_back(static_cast<std::uint8_t>(found.state));
    is_measured_ = true;
    return numbers_;
}

bool MeasuredRows::norms_differ_by_sex(const Case& record) {
    measure(record);
    return norms_differ_;
}

std::vector<std::string> MeasuredRows::missing(const Case& record, std::size_t row) {
    const int sheet = static_cast<int>(rows_[row].analysis), item = rows_[row].item;
    const int band = bands_[rows_[row].analysis].code, sex = record.sex ? static_cast<int>(*record.sex) : male;
    CStringArray names = his_.Missing(sheet, item, SheetPart::value, sex, band);
    if (names.IsEmpty() && !record.sex) names = hers_.Missing(sheet, item, SheetPart::value, female, band);
    std::vector<std::string> all;
    for (INT_PTR i = 0; i < names.GetSize(); ++i) all.push_back(shown(names.GetAt(i)));
    return all;
}

std::string MeasuredRows::verdict(std::size_t row, const CString& text, const cephtool::Texts& texts) const {
    const std::string whole = shown(text);
    const std::string& japanese = rows_.analyses()[rows_[row].analysis]->japanese(whole);
    return texts.language() == cephtool::Language::english ? whole : texts.chosen(texts.part(whole), japanese);
}

Json MeasuredRows::text(const Case& record, std::size_t row, const cephtool::Texts& texts) {
    const tool::Item& item = rows_.item(row);
    const ResultNumbers& found = found_[row];
    tool::NumberTexts shown_texts = tool::number_texts(found, !item.unit.empty(), item.shows_norm);
    if (found.state == ResultState::text) shown_texts.value = verdict(row, found.text, texts);
    if (bands_[rows_[row].analysis].in_doubt)
        for (std::string* norm : {&shown_texts.mean, &shown_texts.sd})
            if (!norm->empty()) *norm = "(" + *norm + ")";
    if (!item.unverified.empty() && !shown_texts.mean.empty()) shown_texts.mean += cephtool::unverified_mark;
    const std::string degenerate[] = {shown(found.degenerate[0]), shown(found.degenerate[1])};
    const Remark reason =
        found.state == no_scale ? Remark{"no_scale", "no scale"} : cephtool::reason_of(found.state, degenerate);
    return {{"row", row},
            {"value", shown_texts.value},
            {"mean", shown_texts.mean},
            {"sd", shown_texts.sd},
            {"deviation", shown_texts.deviation},
            {"stars", shown_texts.stars},
            {"missing", found.state == ResultState::missing ? missing(record, row) : std::vector<std::string>()},
            {"reason", reason.text.empty() ? std::string() : texts(reason)}};
}

Json MeasuredRows::texts(const Case& record, const std::vector<int>& wanted, const cephtool::Texts& texts) {
    measure(record);
    Json list = Json::array();
    for (const std::size_t row : rows_.wanted(wanted)) list.push_back(text(record, row, texts));
    return list;
}

}  // namespace engine
