// The order in which a program's steps are run.
#pragma once

#include "analysis/program.h"

namespace tool {

// Fills `order` and `by_norm` of a program that has all its steps, items and norms, and marks as_text the items that
// lead to a circle or to a norm that only the text tells.
void arrange_steps(Program& program);

}  // namespace tool
