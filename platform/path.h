// The four parts of a path.
#pragma once

#include <string_view>

namespace tool {

// Views into the path that was split; joined in this order they give it back.
struct PathParts {
    std::string_view drive;  // "C:"
    std::string_view dir;    // with its leading and trailing delimiter
    std::string_view name;
    std::string_view ext;  // with its "."
};

// "\" and "/" both delimit; trail bytes never do. The extension starts at the last "." behind the last delimiter.
PathParts split_path(std::string_view path);

}  // namespace tool
