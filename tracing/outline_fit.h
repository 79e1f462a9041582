// The outlines of the average face, brought onto the landmarks of a case.
//
// 1. A tooth of which the template has two landmarks or more is a stiff body: it moves, turns and grows with its own
//    landmarks, and is left out when the case has fewer than two of them.
// 2. All else follows a thin-plate spline through the other landmarks and the necks of those teeth. Where it would fold
//    a curve, that curve follows a smoother map. A tooth with fewer landmarks is a stiff body carried by that map.
// 3. A curve passes through each of its anchors that the case has.
// 4. Curves are left out when the case's landmarks are far from them.
#pragma once

#include <string>
#include <vector>

#include "tracing/outline_template.h"

namespace cephtool {

struct FittedCurve {
    Outline outline;  // in the case's pixels; its anchors are those that the case has
    OutlineStyle style;
};

struct OutlineFit {
    std::vector<FittedCurve> curves;  // in the template's order
    std::vector<std::string> notes;   // what was left out or smoothed, and why
};

OutlineFit fitted_outlines(const OutlineTemplate& face, const std::vector<Landmark>& landmarks);

}  // namespace cephtool
