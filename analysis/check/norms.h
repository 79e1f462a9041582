// Norms of items in definition files.
#pragma once

#include "analysis/check/checked_file.h"

namespace tool {

// Whether the norms that an item has go together.
void check_norms_of(const NamedLine& item, CheckedFile& file);

// A line of a section of norms, whose SectionCode is given.
void check_norm(std::string_view line, int section, NormPart part, CheckedFile& file);

}  // namespace tool
