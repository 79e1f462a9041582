#include "host/results/measurement.h"

#include <CodePage.h>

#include "host/case/case_record.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

std::string utf8(const CString& text) {
    return printable(Utf8FromCodePage932(text));
}

std::vector<std::string> texts(const CStringArray& list) {
    std::vector<std::string> all;
    for (INT_PTR i = 0; i < list.GetSize(); ++i) all.push_back(utf8(list.GetAt(i)));
    return all;
}

const char* reason_of(ResultState state) {
    switch (state) {
        case ResultState::no_formula: return "no formula";
        case ResultState::not_finite: return "not a finite number";
        case ResultState::differs_by_sex: return "depends on the sex";
        default: return "";
    }
}

Measurement measurement(const ResultRow& row) {
    const auto number = [](bool has, double value) { return has ? std::optional(value) : std::nullopt; };
    const bool is_text = row.state == ResultState::text;
    return {.heading = row.state == ResultState::heading,
            .name = utf8(row.title),
            .unit = utf8(row.unit),
            .column = row.column,
            .marked = row.marked,
            .value = number(row.state == ResultState::value, row.value),
            .text = is_text ? utf8(row.valueText) : "",
            .mean = number(row.hasMean, row.mean),
            .sd = number(row.hasSd, row.sd),
            .deviation = number(row.hasDeviation, row.deviation),
            .value_text = utf8(row.valueText),
            .mean_text = utf8(row.meanText),
            .sd_text = utf8(row.sdText),
            .deviation_text = utf8(row.deviationText),
            .stars = utf8(row.stars),
            .missing = texts(row.missing),
            .norm_missing = texts(row.normMissing),
            .reason = reason_of(row.state)};
}

}  // namespace

CaseResult measured(Case record, std::span<const Analysis* const> analyses, std::optional<int> band,
                    bool only_fruitful) {
    CaseResult result{std::move(record), false, {}};
    CaseRecord fields(result.record);
    const std::optional<Sex> sex = result.record.sex;
    for (const Analysis* analysis : analyses) {
        if (case_kind(*analysis) != result.record.kind) continue;
        NormBand norms = norm_band(*analysis, result.record);
        if (band && !norms.words.empty()) norms.words = "Norms of band " + std::to_string(*band) + ", as --band says";
        norms.code = band.value_or(norms.code);
        const SheetSubject subject = fields.subject(static_cast<int>(sex.value_or(Sex::male)), norms.code);
        const ResultList list(analysis->sheet, subject, sex.has_value());
        if (only_fruitful && !list.HasResults()) continue;
        AnalysisResult found{analysis, norms, {}};
        for (const ResultRow& row : list) found.items.push_back(measurement(row));
        result.norms_differ = result.norms_differ || list.NormsDiffer();
        result.analyses.push_back(std::move(found));
    }
    return result;
}

}  // namespace cephtool
