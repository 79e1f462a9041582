// The unit of an item's value, told from its formula. For display only.
#pragma once

#include <string_view>

#include "analysis/definition_file.h"

namespace tool {

// "mm", "deg", "%", "SD", or "" for a plain number and where the units do not fit together.
std::string_view unit_of_item(const DefinitionFile& file, std::string_view name);

}  // namespace tool
