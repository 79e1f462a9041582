// The "list.txt" of a folder of analyses or display modes.
#pragma once

#include <functional>
#include <vector>

#include "analysis/check/findings.h"

namespace tool {

// Reads the list as the engine does. `is_there` says whether a listed file can be read; without it that is not looked
// at. Returns the files that are listed and there, each once.
std::vector<std::string_view> check_catalogue(CheckFamily family, std::string_view text, Findings& findings,
                                              const std::function<bool(std::string_view)>& is_there);

}  // namespace tool
