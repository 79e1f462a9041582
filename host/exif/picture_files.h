#pragma once

#include <string>
#include <vector>

namespace cephtool {

// The JPEG files of a folder and of those in it, by name, sorted; links to folders are not followed. Throws an Error
// when there are none, or when a folder can't be read.
std::vector<std::string> pictures_below(const std::string& folder);

}  // namespace cephtool
