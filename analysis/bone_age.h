// Skeletal age from the shape of the third and fourth cervical vertebra on the lateral film.
#pragma once

#include "Records.h"

namespace tool {

// Coefficients of age = constant + c3_height * (AH/AP of C3) + c4_height * (AH/AP of C4) + c4_ratio * (AH/PH of C4),
// in years. Mito, Sato and Mitani, Am J Orthod Dentofacial Orthop 2002;122:380-385 (girls): -0.20, 6.20, 5.90, 4.74.
struct BoneAgeCoefficients {
    double constant, c3_height, c4_height, c4_ratio;
};

// The clinic's own from cvba.dat in its analysis folder, each missing one the built-in for the sex (1 male).
// Kept: without a folder in the settings the file is looked for in the root folder, not beside the program.
BoneAgeCoefficients bone_age_coefficients(int sex);

// Infinite or NaN when a depth or height that divides is 0. The scale cancels out.
double bone_age(const tagCVBA& vertebrae, const BoneAgeCoefficients& coefficients);

}  // namespace tool
