// The age of the bones by the shape of the third and fourth cervical vertebra. Mito, Sato and Mitani made the formula
// from girls of 7 to 14.9 years (Am J Orthod Dentofacial Orthop 2002;122:380-385); in the grown-up it says nothing.
#pragma once

#include "cases/case.h"
#include "results/analysis_folder.h"
#include "results/finding.h"

namespace cephtool {

// The bone age, with the three ratios that it is made from and where its coefficients are from.
Finding bone_age_finding(const Case& record, const AnalysisFolder& folder);

// How far the bone age, which must be known, is ahead of the age.
Finding bone_age_difference(const Finding& bone_age, const Finding& age);

}  // namespace cephtool
