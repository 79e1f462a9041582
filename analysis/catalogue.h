// Where the analysis definition files lie. Paths are code page 932.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// The analysis folder as the host's profile names it, "" when it does not.
std::string configured_analysis_root();

// The analysis folder with its delimiter: key ANAITEMPATH in section DB_DIR of the host's profile, else ANAITEM
// beside the running program.
std::string analysis_root();

// Path of analysis file `index` of a kind; "" when its catalogue does not have one.
std::string form_file(int kind, int index);
std::vector<std::string> form_files(int kind);  // all of them

// The text of an engine file; "" when it can't be read, which every reader treats as an empty file.
std::string file_text(std::string_view path);

}  // namespace tool
