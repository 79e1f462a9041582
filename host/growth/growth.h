// Where a patient's growth stands by age and teeth: stage of the Ricketts table and of the analyses.
#pragma once

#include "host/case/case.h"
#include "host/catalogue.h"
#include "host/growth/finding.h"

namespace cephtool {

Finding age_finding(const Case& record);  // in years
Finding dental_stage_finding(const Case& record);
Finding ricketts_stage_finding(const Case& record);

// In which of the stages of a set of the analysis the patient is. Without stages for the patient's sex there is neither
// a value nor something missing.
// The engine counts a patient whom no stage covers to the first one.
Finding stage_finding(const Analysis& analysis, StageSet set, const Case& record);

// The code of the norm columns of the patient's stages, and in words how it came about; no words for an analysis
// without stages. Column 0 where the stage can't be known.
struct NormBand {
    int code = 0;
    std::string words = {};
    std::vector<Finding> stages = {};  // of the first and the second set, where the analysis has them
    std::vector<Remark> remarks = {};  // on how the norms fit the patient
};
NormBand norm_band(const Analysis& analysis, const Case& record);

}  // namespace cephtool
