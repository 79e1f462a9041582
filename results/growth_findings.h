// How far a patient has grown, in all ways that the case allows.
#pragma once

#include <vector>

#include "cases/case.h"
#include "results/analysis_folder.h"
#include "results/finding.h"

namespace cephtool {

// Age and dental stage; of lateral films also the Ricketts stage and the bone age, which is compared with the age.
std::vector<Finding> growth_findings(const Case& record, const AnalysisFolder& folder);

}  // namespace cephtool
