// Display-mode files.
#pragma once

#include "analysis/check_findings.h"

namespace tool {

void check_display_mode(std::string_view text, int kind, Findings& findings);

}  // namespace tool
