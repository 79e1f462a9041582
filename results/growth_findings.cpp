#include "results/growth_findings.h"

#include "results/bone_age.h"
#include "results/growth.h"

namespace cephtool {

std::vector<Finding> growth_findings(const Case& record, const AnalysisFolder& folder) {
    const Finding age = age_finding(record);
    std::vector<Finding> findings{age, dental_stage_finding(record)};
    if (record.kind != Kind::lateral) return findings;
    const Finding bone_age = bone_age_finding(record, folder);
    findings.insert(findings.end(), {ricketts_stage_finding(record, folder), bone_age});
    if (bone_age.years) findings.push_back(bone_age_difference(bone_age, age));
    return findings;
}

}  // namespace cephtool
