#include "host/batch/case_measurer.h"

#include <CodePage.h>

#include <cmath>

#include "base/wording.h"
#include "results/measurement.h"

namespace cephtool {
namespace {

// What is kept does not grow without end, whatever the cases are.
constexpr std::size_t most_kept = 4096;

std::optional<double> finite(bool known, double value) {
    return known && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// What of a man's item holds for a woman, too; false when a norm does not.
bool keep_common(BatchItem& item, const BatchItem& hers) {
    if (item.value != hers.value || item.text != hers.text) {
        item.value.reset();
        item.text.clear();
    }
    const bool same_norms = item.mean == hers.mean && item.sd == hers.sd;
    if (!same_norms) {
        item.mean.reset();
        item.sd.reset();
    }
    if (!item.value || !item.mean || !item.sd) item.deviation.reset();
    return same_norms;
}

}  // namespace

const CaseMeasurer::Norms& CaseMeasurer::norms_of(const Analysis& analysis, const Case& record) {
    const int months = record.birth && record.film ? months_at(*record.film, *record.birth) : -1;
    if (known_norms_.size() > most_kept) known_norms_.clear();
    const auto [found, is_new] = known_norms_.try_emplace({&analysis, record.sex, months, record.dental_stage});
    if (!is_new) return found->second;
    const NormBand band = norm_band(analysis, record, band_);
    found->second.band = band.code;
    for (const Remark& remark : band.remarks) found->second.remarks.push_back(remark.code);
    return found->second;
}

void CaseMeasurer::measure_as(std::size_t index, SheetMeasurer& sheets, Sex sex, int band, std::span<BatchItem> items) {
    const int sheet = static_cast<int>(index), engine_sex = static_cast<int>(sex);
    const std::vector<BatchAnalysis::Item>& wanted = columns_.analyses[index].items;
    const bool norms = with_norms();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto lacks = [&](SheetPart part) { return sheets.Lacks(sheet, wanted[i].index, part, engine_sex, band); };
        const bool lacks_value = !wanted[i].has_formula || lacks(SheetPart::value);
        if (lacks_value && !norms) continue;
        const SheetRow row = sheets.Evaluate(sheet, wanted[i].index, engine_sex, band);
        BatchItem& item = items[i];
        const auto has_norm = [&](bool has, SheetPart part) {
            return has && !row.norm_needs_band && !(norms && lacks(part));
        };
        item.mean = finite(has_norm(row.has_mean, SheetPart::mean), row.mean);
        item.sd = finite(has_norm(row.has_sd, SheetPart::sd), row.sd);
        if (lacks_value || row.needs_band || row.at_one_place || row.parallel) continue;
        if (row.is_text) {
            item.text = printable(Utf8FromCodePage932(row.text));
            continue;
        }
        item.value = finite(true, row.value);
        const bool deviates = item.value && item.mean && item.sd && *item.sd != 0;
        item.deviation = finite(deviates, row.deviation);
    }
}

const MeasuredCase& CaseMeasurer::measure(const Case& record) {
    CaseRecord fields(record);
    std::optional<SheetMeasurer>& sheets = sheets_[static_cast<std::size_t>(record.kind)];
    if (!sheets) sheets.emplace(columns_.sets[static_cast<std::size_t>(record.kind)]);
    sheets->Measure(fields.subject(0, 0));
    std::vector<BatchItem>& all = measured_.items;
    std::vector<std::string>& remarks = measured_.remarks;
    all.clear();
    remarks.clear();
    for (const Remark& remark : record.remarks) remarks.push_back(remark.code);
    bool same_norms = true;
    for (std::size_t index = 0; index < columns_.analyses.size(); ++index) {
        const BatchAnalysis& analysis = columns_.analyses[index];
        const std::size_t first = all.size();
        all.resize(first + analysis.items.size());
        if (!analysis.sheet(record.kind)) continue;
        const Norms& norms = norms_of(*analysis.for_kind[static_cast<std::size_t>(record.kind)], record);
        if (with_norms()) {
            for (const std::string& code : norms.remarks) remarks.push_back(analysis.name + ":" + code);
        }
        const std::span<BatchItem> items(all.data() + first, analysis.items.size());
        const Sex sex = record.sex.value_or(Sex::male);
        measure_as(index, *sheets, sex, norms.band, items);
        if (record.sex) continue;
        hers_.assign(items.size(), {});
        measure_as(index, *sheets, Sex::female, norms.band, hers_);
        for (std::size_t i = 0; i < items.size(); ++i) same_norms = keep_common(items[i], hers_[i]) && same_norms;
    }
    if (!same_norms) remarks.push_back(norms_by_sex().code);
    return measured_;
}

}  // namespace cephtool
