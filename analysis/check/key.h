// Lines that were meant as keys.
#pragma once

#include "analysis/check/findings.h"

namespace tool {

// A content line that a person reads as a key and the engine does not: with blanks round it, text or a wide colon
// behind it, or a word that is no key at all. True when it was one.
bool check_for_key(std::string_view line, Findings& findings);

}  // namespace tool
