// Definition files: sections, items, norms, and how they refer to each other.
#pragma once

#include "analysis/check/findings.h"
#include "analysis/definition_file.h"

namespace tool {

// `ricketts`: the stages of another quantity than age are numbers, not dental stages.
void check_definition(const DefinitionFile& file, int kind, bool ricketts, Findings& findings);

}  // namespace tool
