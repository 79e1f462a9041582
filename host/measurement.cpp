#include "host/measurement.h"

#include <CodePage.h>

#include <algorithm>
#include <cmath>

#include "host/case_record.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

std::vector<std::string> texts(const CStringArray& list) {
    std::vector<std::string> all;
    for (INT_PTR i = 0; i < list.GetSize(); ++i) all.push_back(printable(Utf8FromCodePage932(list.GetAt(i))));
    return all;
}

std::optional<double> finite(double value) {
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// A norm that is a formula over missing landmarks would come out as a number all the same: it is left out.
void look_up_norm(const AnalysisSheet& sheet, int index, const SheetSubject& subject, const SheetRow& row,
                  Measurement& item) {
    item.norm_missing = texts(sheet.Missing(index, SheetPart::mean, subject));
    if (item.norm_missing.empty() && row.has_mean) item.mean = finite(row.mean);
    const std::vector<std::string> sd_missing = texts(sheet.Missing(index, SheetPart::sd, subject));
    if (sd_missing.empty() && row.has_sd) item.sd = finite(row.sd);
    for (const std::string& name : sd_missing)
        if (std::ranges::find(item.norm_missing, name) == item.norm_missing.end()) item.norm_missing.push_back(name);
}

Measurement measure(const AnalysisSheet& sheet, int index, const SheetSubject& subject) {
    const SheetItem definition = sheet.GetItem(index);
    Measurement item;
    item.name = printable(Utf8FromCodePage932(definition.name));
    item.unit = printable(Utf8FromCodePage932(definition.unit));
    if (definition.expression.IsEmpty()) {
        item.reason = "no formula";
        return item;
    }
    const SheetRow row = sheet.Evaluate(index, subject);
    look_up_norm(sheet, index, subject, row, item);
    item.missing = texts(sheet.Missing(index, SheetPart::value, subject));
    if (!item.missing.empty()) return item;
    item.text = printable(Utf8FromCodePage932(row.text));
    if (!item.text.empty()) return item;
    item.value = finite(row.value);
    if (!item.value) item.reason = "not a finite number";
    if (item.value && item.mean && item.sd && *item.sd != 0) item.deviation = finite(row.deviation);
    return item;
}

// What holds for both sexes. `norms_differ` is set when a norm had to be left out.
Measurement agreed(Measurement male, const Measurement& female, bool& norms_differ) {
    if (male.missing.empty()) male.missing = female.missing;
    if (male.value != female.value || male.text != female.text) {
        male.value.reset();
        male.text.clear();
        if (male.missing.empty()) male.reason = "depends on the sex";
    }
    if (male.mean != female.mean || male.sd != female.sd) {
        norms_differ = true;
        male.mean.reset();
        male.sd.reset();
    }
    if (!male.value || !male.mean || !male.sd) male.deviation.reset();
    return male;
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
        const auto measured_as = [&](Sex assumed, int index) {
            return measure(analysis->sheet, index, fields.subject(static_cast<int>(assumed), norms.code));
        };
        AnalysisResult found{analysis, norms, {}};
        bool norms_differ = false;
        for (int index = 0; index < analysis->sheet.GetCount(); ++index) {
            found.items.push_back(
                sex ? measured_as(*sex, index)
                    : agreed(measured_as(Sex::male, index), measured_as(Sex::female, index), norms_differ));
        }
        if (only_fruitful && std::ranges::none_of(found.items, &Measurement::has_result)) continue;
        result.norms_differ = result.norms_differ || norms_differ;
        result.analyses.push_back(std::move(found));
    }
    return result;
}

}  // namespace cephtool
