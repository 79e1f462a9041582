// Made-up subjects on which a formula is tried: what the evaluator gives there shows how it reads the formula.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "Records.h"
#include "analysis/landmarks.h"

namespace tool {

class FormulaTrials {
 public:
    static constexpr int count = 3;

    FormulaTrials();

    // Arguments for function number `call` of a formula: points of its own, and an item with a value of its own.
    static std::string points(int call, int needed);
    static std::string item(int call);

    // What the evaluator makes of a formula over these.
    double evaluated(std::string_view formula, int trial) const;

 private:
    // Casts, since every function measures something on them.
    std::array<tagPOINTMO, count> records_{};
    std::array<std::unique_ptr<Landmarks>, count> landmarks_;
    unsigned short user_count_ = USER_POINT_MAX;
};

}  // namespace tool
