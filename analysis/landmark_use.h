// Which landmarks a clinic's analyses need.
#pragma once

#include <string_view>

namespace tool {

// True when a first-set item of any analysis of the kind names the landmark in brackets. Names of more than ten
// characters never match. Kind 20 has one file.
bool uses_landmark(int kind, std::string_view name);

}  // namespace tool
