// Sheets that have norms of another population for the analysis of another file.
#pragma once

#include "analysis/check/findings.h"
#include "analysis/definition_file.h"
#include "analysis/sample.h"

namespace tool {

// What tells populations apart: the name, in small letters.
std::string population_of(const Sample& sample);

// `base` is the text of the file that a sheet says it is a variant of; null when it can't be read.
void check_variant(const DefinitionFile& variant, const DefinitionFile* base, Findings& findings);

}  // namespace tool
