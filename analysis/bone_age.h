// Where the coefficients of the bone age come from.
#pragma once

#include <string_view>

#include "BoneAge.h"

namespace tool {

// Of a clinic's cvba.dat, each missing one the built-in for the sex (1 male).
BoneAgeCoefficients bone_age_coefficients(std::string_view cvba_dat, int sex);

// The same of the file in the clinic's analysis folder.
// Kept: without a folder in the settings the file is looked for in the root folder, not beside the program.
BoneAgeCoefficients configured_bone_age_coefficients(int sex);

}  // namespace tool
