// Landmark names that a text uses.
#pragma once

#include <unordered_set>
#include <vector>

#include "analysis/check/findings.h"

namespace tool {

// A name that is in no table can be a landmark of the user's own, so it is only noted, once a text. A fault are names
// that nothing can have, and those that look like a slip in a name of the table (findings.h, meant_name).
class LandmarkCheck {
 public:
    LandmarkCheck(int kind, Findings& findings);
    void check(std::string_view name);

 private:
    Findings& findings_;
    std::vector<std::string_view> known_;
    std::unordered_set<std::string_view> noted_;
};

}  // namespace tool
