// Items and norms that refer to themselves, directly or through others.
#pragma once

#include <unordered_map>
#include <vector>

#include "analysis/check/findings.h"
#include "analysis/definition_file.h"
#include "analysis/formula.h"

namespace tool {

// By the begin of the item or norm line that they stand in.
using References = std::unordered_map<const char*, std::vector<Reference>>;

void check_circles(const DefinitionFile& file, const References& references, Findings& findings);

}  // namespace tool
