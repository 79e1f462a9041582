// Bytes that are no text in code page 932.
#pragma once

#include "analysis/check/findings.h"

namespace tool {

// False when the file is in another encoding altogether, so that no other check makes sense.
bool check_text(std::string_view text, Findings& findings);

}  // namespace tool
