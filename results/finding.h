// One thing that was found out about a patient's growth, what it rests on, or why it was not found out.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/remark.h"

namespace cephtool {

struct Ground {
    std::string name;
    std::string text;
    std::optional<double> number = {};  // the same with all digits, where it is one
};

struct Finding {
    std::string what;
    std::optional<int> stage = {};  // its place, from 0
    std::string name = {};          // of the stage
    // Those in Japanese that no table of texts has: of an analysis, of a stage.
    std::string japanese_what = {}, japanese_name = {};
    std::optional<double> years = {};  // an age
    std::vector<Ground> grounds = {};
    std::vector<std::string> missing = {};  // what the case lacks: a key of the case format or a point of a vertebra
    std::optional<Remark> remark = {};      // on norms that rest on it
    std::string reason = {};                // why there is no result although nothing is missing

    bool has_result() const { return stage || years; }
};

}  // namespace cephtool
