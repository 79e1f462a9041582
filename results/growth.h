// Where a patient's growth stands by age and teeth: stage of the Ricketts table and of the analyses.
#pragma once

#include <optional>

#include "cases/case.h"
#include "results/analysis_folder.h"
#include "results/finding.h"

namespace cephtool {

Finding age_finding(const Case& record);  // in years
Finding dental_stage_finding(const Case& record);
Finding ricketts_stage_finding(const Case& record, const AnalysisFolder& folder);

using tool::StageSet;

// In which of the stages of a set of the analysis the patient is. Without stages for the patient's sex there is neither
// a value nor something missing.
Finding stage_finding(const Analysis& analysis, StageSet set, const Case& record);

// The code of the norm columns of the patient's stages, and in words how it came about; no words for an analysis
// without stages.
struct NormBand {
    static constexpr int unknown = -1;  // of any set that has stages

    int code = 0;
    std::string words = {};
    std::optional<tool::Population> population = {};  // whose norms they are; nothing for an analysis without norms
    std::vector<Finding> stages = {};                 // of the first and the second set, where the analysis has them
    bool in_doubt = false;                            // the norms are of people who were not of the patient's age
    std::vector<Remark> remarks = {};                 // on how the norms fit the patient
};
// `given` is a code that goes before the patient's stages.
NormBand norm_band(const Analysis& analysis, const Case& record, std::optional<int> given);

}  // namespace cephtool
