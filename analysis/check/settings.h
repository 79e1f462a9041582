// Settings files of the engine: the eras and the coefficients of bone age.
#pragma once

#include "analysis/check/findings.h"

namespace tool {

void check_eras(std::string_view text, Findings& findings);
void check_bone_age(std::string_view text, Findings& findings);

}  // namespace tool
