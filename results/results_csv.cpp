#include "base/csv.h"
#include "base/numbers.h"
#include "base/wording.h"
#include "results/names.h"
#include "results/results.h"

namespace cephtool {
namespace {

std::string field(const std::optional<double>& value) {
    return value ? shortest(*value) : std::string();
}

std::string age_months(const Case& record) {
    return record.birth && record.film ? std::to_string(months_at(*record.film, *record.birth)) : std::string();
}

// Of everything that the item is a part of.
std::string remarks_on(const CaseResult& result, const AnalysisResult& analysis, const Measurement& item) {
    std::vector<Remark> all = result.record.remarks;
    all.insert(all.end(), analysis.remarks().begin(), analysis.remarks().end());
    all.insert(all.end(), item.remarks.begin(), item.remarks.end());
    if (!item.reason.code.empty()) all.push_back(item.reason);
    for (const Remark& remark : item.error_remarks())
        if (remark.code != "error_mostly") all.push_back(remark);
    return codes_of(all);
}

std::string error_fields(const Measurement& item) {
    if (!item.error || item.error->state != ErrorState::known) return ",,,,";
    return "," + shortest(item.error->value) + "," + field(item.error->deviation) + "," +
           csv_field(item.error->mostly) + "," + csv_field(joined(item.error->assumed, " "));
}

std::string row(const CaseResult& result, const AnalysisResult& analysis, const Measurement& item,
                const std::string& group, const Texts& texts, bool with_errors) {
    const auto& population = analysis.band.population;
    const std::string value = item.text.empty() ? field(item.value) : csv_field(item.text);
    return csv_field(printable(result.record.file)) + "," + csv_field(title_of(*analysis.analysis)) + "," +
           csv_field(item.name) + "," + value + "," + item.unit + "," + field(item.mean) + "," + field(item.sd) + "," +
           field(item.deviation) + "," + csv_field(joined(item.missing, " ")) + "," + age_months(result.record) + "," +
           remarks_on(result, analysis, item) + "," + csv_field(group) + "," + csv_field(label_of(item, texts)) + "," +
           csv_field(population ? printable(population->name) : "") + "," + csv_field(texts.part(item.unverified)) +
           (with_errors ? error_fields(item) : "") + "\r\n";
}

}  // namespace

std::string results_csv(std::span<const CaseResult> results, const Texts& texts) {
    bool with_errors = false;
    for (const CaseResult& result : results) with_errors = with_errors || has_errors(result);
    std::string text =
        "case,analysis,item,value,unit,mean,sd,deviation,missing,age_months,remarks,group,label,population,"
        "unverified";
    text += with_errors ? ",error,deviation_error,mostly,assumed\r\n" : "\r\n";
    for (const CaseResult& result : results)
        for (const AnalysisResult& analysis : result.analyses) {
            std::string group;
            for (const Measurement& item : analysis.items) {
                if (item.heading)
                    group = label_of(item, texts);
                else
                    text += row(result, analysis, item, group, texts, with_errors);
            }
        }
    return text;
}

}  // namespace cephtool
