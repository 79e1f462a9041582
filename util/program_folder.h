// Where the running program lies.
#pragma once

#include <string>

namespace tool {

// Drive and directory, ending in a backslash (off Windows only this last delimiter is one); "" when the program's name
// comes without a directory.
std::string program_folder();

}  // namespace tool
