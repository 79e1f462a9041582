// What is wrong with one formula, told by reading it as mathematics and by letting the evaluator work on it.
#pragma once

#include <string_view>

#include "analysis/check/landmarks.h"
#include "analysis/check/trials.h"

namespace tool {

// Checks formulas of one text.
class FormulaCheck {
 public:
    FormulaCheck(int kind, Findings& findings);

    // Syntax, functions and their arguments, landmarks; then, when all that is right, whether the evaluator gives what
    // mathematics gives. Items that it refers to are left to the caller.
    void check(std::string_view formula);

 private:
    int kind_;
    Findings& findings_;
    LandmarkCheck landmarks_;
    FormulaTrials trials_;
};

}  // namespace tool
