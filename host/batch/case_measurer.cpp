#include "host/batch/case_measurer.h"

#include <CodePage.h>

#include <cmath>

#include "host/results/measurement.h"
#include "host/text_width.h"

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

const std::vector<CaseMeasurer::Lacks>& CaseMeasurer::lacks_of(std::size_t index, Kind kind,
                                                               const SheetSubject& subject,
                                                               SheetMeasurement& measurement) {
    const BatchAnalysis& analysis = columns_.analyses[index];
    std::vector<Lacks>* lacks = &lacks_;
    if (analysis.plain && !landmarks_.empty()) {
        if (known_lacks_.size() > most_kept) known_lacks_.clear();
        const auto [found, is_new] = known_lacks_.try_emplace({index, kind, subject.sex, subject.band, landmarks_});
        lacks = &found->second;
        if (!is_new) return *lacks;
    }
    lacks->clear();
    const bool norms = with_norms();
    for (const BatchAnalysis::Item& item : analysis.items) {
        const auto any = [&](SheetPart part) {
            return !item.has_formula || !measurement.Missing(item.index, part).IsEmpty();
        };
        lacks->push_back({any(SheetPart::value), norms && any(SheetPart::mean), norms && any(SheetPart::sd)});
    }
    return *lacks;
}

void CaseMeasurer::measure_as(std::size_t index, Kind kind, const SheetSubject& subject, std::span<BatchItem> items) {
    const BatchAnalysis& analysis = columns_.analyses[index];
    SheetMeasurement measurement(*analysis.sheet(kind), subject);
    const std::vector<Lacks>& lacks = lacks_of(index, kind, subject, measurement);
    const bool norms = with_norms();
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (lacks[i].value && !norms) continue;
        const SheetRow row = measurement.Evaluate(analysis.items[i].index);
        BatchItem& item = items[i];
        item.mean = finite(row.has_mean && !lacks[i].mean && !row.norm_needs_band, row.mean);
        item.sd = finite(row.has_sd && !lacks[i].sd && !row.norm_needs_band, row.sd);
        if (lacks[i].value || row.needs_band || row.at_one_place || row.parallel) continue;
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
    landmarks_.clear();
    // A virtual landmark lacks what its construction lacks, so that names would not be enough.
    if (record.virtuals.empty()) {
        for (const auto* landmarks : {&record.landmarks, &record.user})
            for (const Landmark& landmark : *landmarks) landmarks_.append(landmark.name).push_back('\n');
    }
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
        measure_as(index, record.kind, fields.subject(static_cast<int>(sex), norms.band), items);
        if (record.sex) continue;
        hers_.assign(items.size(), {});
        measure_as(index, record.kind, fields.subject(static_cast<int>(Sex::female), norms.band), hers_);
        for (std::size_t i = 0; i < items.size(); ++i) same_norms = keep_common(items[i], hers_[i]) && same_norms;
    }
    if (!same_norms) remarks.push_back(norms_by_sex().code);
    return measured_;
}

}  // namespace cephtool
