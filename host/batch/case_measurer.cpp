#include "host/batch/case_measurer.h"

#include <CodePage.h>

#include <algorithm>

#include "base/wording.h"
#include "results/measurement.h"

namespace cephtool {
namespace {

// What is kept does not grow without end, whatever the cases are.
constexpr std::size_t most_kept = 4096;

}  // namespace

// Of the analyses in their order, as far as they are for the case's kind.
const std::vector<CaseMeasurer::Norms>& CaseMeasurer::norms_of(const Case& record, std::optional<int> months) {
    if (known_norms_.size() > most_kept) known_norms_.clear();
    const Grown grown(record.kind, record.sex, months, record.dental_stage, record.population);
    if (const auto known = known_norms_.find(grown); known != known_norms_.end()) return known->second;
    std::vector<Norms> all;
    for (const BatchAnalysis& each : columns_.analyses) {
        Norms& norms = all.emplace_back();
        const Analysis* analysis = each.for_kind[static_cast<std::size_t>(record.kind)];
        if (!analysis) continue;
        AnalysisFamily family(analysis);
        for (const BatchAnalysis::Variant& variant : each.variants) family.variants.push_back(variant.analysis);
        if (const Analysis* const chosen = family.of(record.population); chosen != analysis) {
            norms.variant = &*std::ranges::find(each.variants, chosen, &BatchAnalysis::Variant::analysis);
            analysis = chosen;
        }
        const NormBand band = norm_band(*analysis, record, band_);
        norms.band = band.code;
        if (band.population) norms.population = printable(band.population->name);
        for (const Remark& remark : band.remarks) norms.remarks.push_back(each.name + ":" + remark.code);
        const auto unverified = [](const tool::Item& item) { return !item.unverified.empty(); };
        if (std::ranges::any_of(analysis->items(), unverified))
            norms.remarks.push_back(each.name + ":unverified_norms");
    }
    return known_norms_.emplace(grown, std::move(all)).first->second;
}

ResultNumbers CaseMeasurer::numbers(const BatchAnalysis::Item& item, int sheet, SheetMeasurer& sheets, Sex sex,
                                    int band, bool norms) {
    if (!item.has_formula) return {};
    return ResultList::Numbers(sheets, sheet, item.index, static_cast<int>(sex), band, norms);
}

void CaseMeasurer::add_error(BatchItem& item, const SheetError& error) {
    if (error.state != ErrorState::known) return;
    item.error = error.value;
    if (item.deviation) item.deviation_error = error.deviation;
    if (!error.mostly.IsEmpty()) item.mostly = verdict(error.mostly);
    CString assumed;
    for (int i = 0; i < error.assumed.GetSize(); ++i) assumed += (i > 0 ? " " : "") + error.assumed.GetAt(i);
    if (!assumed.IsEmpty()) item.assumed = verdict(assumed);
}

std::string_view CaseMeasurer::verdict(const CString& text) {
    auto known = verdicts_.find(text.View());
    if (known == verdicts_.end()) known = verdicts_.emplace(text.View(), printable(Utf8FromCodePage932(text))).first;
    return known->second;
}

const MeasuredCase& CaseMeasurer::measure(const Case& record) {
    CaseRecord fields(record);
    std::optional<SheetMeasurer>& sheets = sheets_[static_cast<std::size_t>(record.kind)];
    if (!sheets) {
        sheets.emplace(columns_.sets[static_cast<std::size_t>(record.kind)]);
        if (errors_) sheets->SetErrors(*errors_);
    }
    sheets->Measure(fields.subject(0, 0));
    std::vector<BatchItem>& all = measured_.items;
    std::vector<std::string>& remarks = measured_.remarks;
    all.clear();
    remarks.clear();
    for (const Remark& remark : record.remarks) remarks.push_back(remark.code);
    measured_.months.reset();
    if (record.birth && record.film) measured_.months = months_at(*record.film, *record.birth);
    const std::vector<Norms>& all_norms = norms_of(record, measured_.months);
    bool same_norms = true;
    for (std::size_t index = 0; index < columns_.analyses.size(); ++index) {
        const BatchAnalysis& analysis = columns_.analyses[index];
        const Norms& norms = all_norms[index];
        if (analysis.tells_population) all.emplace_back(BatchItem{.text = norms.population, .has_no_norms = true});
        const std::size_t first = all.size();
        all.resize(first + analysis.items.size());
        if (!analysis.sheet(record.kind)) continue;
        if (with_norms()) remarks.insert(remarks.end(), norms.remarks.begin(), norms.remarks.end());
        for (std::size_t i = 0; i < analysis.items.size(); ++i) {
            // An item that the population's sheet lacks is measured by the first one, without norms.
            const bool is_there = !norms.variant || norms.variant->items[i] >= 0;
            const bool of_variant = norms.variant && is_there;
            const int sheet = of_variant ? norms.variant->sheet : static_cast<int>(index);
            BatchAnalysis::Item wanted = analysis.items[i];
            if (of_variant) wanted.index = norms.variant->items[i];
            const auto numbers_for = [&](Sex sex) {
                return numbers(wanted, sheet, *sheets, sex, norms.band, with_norms() && is_there);
            };
            ResultNumbers found = numbers_for(record.sex.value_or(Sex::male));
            if (!record.sex) {
                const ResultNumbers hers = numbers_for(Sex::female);
                same_norms = same_norms && found.HasSameNorms(hers);
                found = ResultList::Common(found, hers);
            }
            BatchItem& item = all[first + i];
            item = {.value = found.value, .mean = found.mean, .sd = found.sd, .deviation = found.deviation};
            if (errors_ && found.value) {
                const int sex = static_cast<int>(record.sex.value_or(Sex::male));
                add_error(item, sheets->Error(sheet, wanted.index, sex, norms.band));
            }
            if (found.state == ResultState::text) item.text = verdict(found.text);
        }
    }
    if (!same_norms) remarks.push_back(norms_by_sex().code);
    return measured_;
}

}  // namespace cephtool
