// Stage sections of definition files.
#pragma once

#include "analysis/check_findings.h"

namespace tool {

// `ricketts`: the stages of another quantity than age are numbers, not dental stages.
void check_stages(std::string_view file, bool ricketts, Findings& findings);

}  // namespace tool
