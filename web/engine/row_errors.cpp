#include "web/engine/row_errors.h"

#include <algorithm>

#include "results/measurement.h"
#include "web/engine/folders.h"

namespace engine {

using cephtool::Analysis;
using cephtool::Case;
using cephtool::Remark;

Json row_errors(Case record, const ChosenRows& rows, const std::vector<int>& wanted, const cephtool::Texts& texts) {
    Json told = {{"remarks", Json::array()}, {"rows", Json::array()}};
    if (!record.mm_per_pixel || rows.analyses().empty()) return told;
    const tool::LandmarkErrors& of_landmarks = landmark_errors_of(*rows.analyses().front());
    record.outlines.clear();
    record.remarks.clear();
    std::optional<cephtool::CaseResult> result;  // of the analysis that was asked for last
    std::size_t measured_analysis = 0;
    std::vector<Remark> remarks;
    for (const std::size_t row : rows.wanted(wanted)) {
        const auto [analysis, item] = rows[row];
        if (!result || measured_analysis != analysis) {
            const Analysis* const one[] = {rows.analyses()[analysis]};
            result = cephtool::measured(record, one, {}, false, &of_landmarks);
            measured_analysis = analysis;
            for (const Remark& remark : result->record.remarks)
                if (remark.code.starts_with("errors") && std::ranges::find(remarks, remark) == remarks.end())
                    remarks.push_back(remark);
        }
        const cephtool::Measurement& found = result->analyses.front().items[static_cast<std::size_t>(item)];
        if (!found.error) continue;
        const tool::ValueError& error = *found.error;
        Json words = Json::array();
        for (const Remark& remark : found.error_remarks()) words.push_back(texts(remark));
        const bool is_known = error.state == ErrorState::known;
        told["rows"].push_back({{"row", row},
                                {"error", is_known ? Json(error.value) : Json()},
                                {"text", error.text},
                                {"deviationError", is_known ? json_of(error.deviation) : Json()},
                                {"mostly", error.mostly},
                                {"assumed", error.assumed},
                                {"isDoubtful", found.stars_with_error() != found.stars},
                                {"words", words}});
    }
    for (const Remark& remark : remarks) told["remarks"].push_back(texts(remark));
    return told;
}

}  // namespace engine
