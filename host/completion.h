// What can stand where a command line breaks off: the scripts in host/completions/ ask for it when Tab is pressed.
#pragma once

#include <iosfwd>

#include "host/command.h"

namespace cephtool {

// `words` are those behind "cephtool", the last one just begun, or "". A line for each that fits: the word, a tab, its
// help; or one line ":folders", or ":files" and the endings they should have (" .json .csv"; none: any file).
void complete(const Arguments& words, std::ostream& out);

}  // namespace cephtool
