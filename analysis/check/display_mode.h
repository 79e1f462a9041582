// Display-mode files.
#pragma once

#include "analysis/check/findings.h"
#include "analysis/definition_file.h"

namespace tool {

void check_display_mode(const DefinitionFile& file, int kind, Findings& findings);

}  // namespace tool
