// Addition of this project: the age of the bones by the shape of the third and fourth cervical vertebra on a lateral
// film. Mito, Sato and Mitani, Am J Orthod Dentofacial Orthop 2002;122:380-385, made the formula from girls of 7 to
// 14.9 years; in the grown-up it says nothing.
#pragma once

#include "Records.h"
#include "framework/export.h"

namespace tool {

// age = constant + c3_height * (AH/AP of C3) + c4_height * (AH/AP of C4) + c4_ratio * (AH/PH of C4), in years.
struct BoneAgeCoefficients {
    double constant = 0, c3_height = 0, c4_height = 0, c4_ratio = 0;
    int from_file = 0;  // how many of the four the folder's cvba.dat gives; the others are built in
};

// Infinite or NaN when a depth or height that divides is 0. The scale cancels out.
TOOL_API double bone_age(const tagCVBA& vertebrae, const BoneAgeCoefficients& coefficients);

}  // namespace tool
