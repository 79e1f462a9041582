#include "results/bone_age.h"

#include <CalcTool.h>

#include <cmath>

#include "base/numbers.h"
#include "base/wording.h"
#include "cases/vertebrae.h"

namespace cephtool {
namespace {

// Ratios of a vertebra's body: height over depth, front height over rear height.
std::vector<Ground> ratios(const tagCVBA& vertebrae) {
    const CPoint* const p = vertebrae.Point;
    const auto height = [&](int base_from, int base_to, int top) {
        return CCalcTool::Get_Suisen_Length(p[base_from], p[base_to], p[top], 1.0);
    };
    const auto ratio = [](const char* name, double a, double b) {
        return Ground{name, with_decimals(a / b, 3), a / b};
    };
    const double c4_front = height(20, 21, 17);
    return {ratio("AH3/AP3", height(14, 15, 11), CCalcTool::Get_Length(p[12], p[13], 1.0)),
            ratio("AH4/AP4", c4_front, CCalcTool::Get_Length(p[18], p[19], 1.0)),
            ratio("AH4/PH4", c4_front, height(20, 21, 16))};
}

std::string origin_of(const tool::BoneAgeCoefficients& coefficients) {
    constexpr int all = 4;
    return coefficients.from_file == all ? "cvba.dat"
           : coefficients.from_file == 0 ? "built in"
                                         : "cvba.dat and built in";
}

}  // namespace

Finding bone_age_finding(const Case& record, const AnalysisFolder& folder) {
    Finding finding{.what = "Bone age"};
    CervicalPoints cervical = cervical_points(record);
    finding.missing = cervical.missing;
    if (!record.sex) finding.missing.emplace_back("sex");
    if (!finding.missing.empty()) return finding;
    finding.grounds = ratios(cervical.points);
    if (!cervical.made.empty()) finding.grounds.push_back({"made from the corners", joined(cervical.made, " ")});
    finding.grounds.push_back({"sex", name_of(*record.sex)});
    const tool::BoneAgeCoefficients& coefficients = folder.bone_age(static_cast<tool::Sex>(*record.sex));
    finding.grounds.push_back({"coefficients", origin_of(coefficients)});
    const double years = tool::bone_age(cervical.points, coefficients);
    if (std::isfinite(years)) {
        finding.years = years;
    } else {
        finding.reason = "points lie on each other, so that a depth or a height is 0";
    }
    return finding;
}

Finding bone_age_difference(const Finding& bone_age, const Finding& age) {
    Finding finding{.what = "Bone age less age"};
    finding.missing = age.missing;
    if (!bone_age.years || !age.years) return finding;
    finding.years = *bone_age.years - *age.years;
    finding.grounds = {{"bone age", with_decimals(*bone_age.years, 2), bone_age.years},
                       {"age", with_decimals(*age.years, 2), age.years}};
    return finding;
}

}  // namespace cephtool
