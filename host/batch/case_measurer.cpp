#include "host/batch/case_measurer.h"

#include <CodePage.h>

#include "base/wording.h"
#include "results/measurement.h"

namespace cephtool {
namespace {

// What is kept does not grow without end, whatever the cases are.
constexpr std::size_t most_kept = 4096;

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

ResultNumbers CaseMeasurer::numbers(const BatchAnalysis::Item& item, int sheet, SheetMeasurer& sheets, Sex sex,
                                    int band) {
    if (!item.has_formula) return {};
    return ResultList::Numbers(sheets, sheet, item.index, static_cast<int>(sex), band, with_norms());
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
        const int sheet = static_cast<int>(index);
        for (std::size_t i = 0; i < analysis.items.size(); ++i) {
            const BatchAnalysis::Item& wanted = analysis.items[i];
            ResultNumbers found = numbers(wanted, sheet, *sheets, record.sex.value_or(Sex::male), norms.band);
            if (!record.sex) {
                const ResultNumbers hers = numbers(wanted, sheet, *sheets, Sex::female, norms.band);
                same_norms = same_norms && found.HasSameNorms(hers);
                found = ResultList::Common(found, hers);
            }
            BatchItem& item = all[first + i];
            item = {found.value, found.mean, found.sd, found.deviation, {}};
            if (found.state == ResultState::text) item.text = printable(Utf8FromCodePage932(found.text));
        }
    }
    if (!same_norms) remarks.push_back(norms_by_sex().code);
    return measured_;
}

}  // namespace cephtool
