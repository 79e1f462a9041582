// Stage sections of definition files.
#pragma once

#include "analysis/check/findings.h"

namespace tool {

// Of the first set, which has two digits of a band code.
inline constexpr int most_bands = 100;

// `ricketts`: the stages of another quantity than age are numbers, not dental stages.
void check_stages(std::string_view file, bool ricketts, Findings& findings);

}  // namespace tool
