// The landmarks that an item needs and a subject lacks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/evaluation.h"

namespace tool {

// Unknown names and those at the empty point, each once, in the order in which the formula meets them. Follows the
// items, norms and virtual landmarks that the formula refers to, and of alternatives only the selected one.
std::vector<std::string> missing_for_item(std::string_view item, const DefinitionFile& file, Landmarks& landmarks,
                                          int sex, int band);
std::vector<std::string> missing_for_norm(std::string_view item, NormPart part, const DefinitionFile& file,
                                          Landmarks& landmarks, int sex, int band);

}  // namespace tool
