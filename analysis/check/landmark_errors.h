// The file of the landmarks' errors: lines that its reader passes over.
#pragma once

#include "analysis/check/findings.h"

namespace tool {

void check_landmark_errors(std::string_view text, Findings& findings);

}  // namespace tool
