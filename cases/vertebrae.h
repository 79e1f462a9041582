// The points of the third and fourth cervical vertebra from which a bone age is made, under the names that the
// literature gives the corners (Baccetti, Franchi and McNamara, Semin Orthod 2005;11:119-129): u upper, l lower,
// a front (anterior), p rear (posterior); d are the ends of the depth.
#pragma once

#include <Records.h>

#include <string>
#include <vector>

#include "cases/case.h"

namespace cephtool {

std::vector<std::string> vertebra_point_names();

struct CervicalPoints {
    tagCVBA points{};                  // in 1/64 pixel; complete when nothing is missing
    std::vector<std::string> missing;  // points to be placed
    std::vector<std::string> made;     // ends of a depth that were not placed: the middle between two corners
};

CervicalPoints cervical_points(const Case& record);

}  // namespace cephtool
