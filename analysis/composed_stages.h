// The stages of a composed analysis: those of the analyses that its norms come from, cut at all their borders.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/growth_stage.h"

namespace tool {

struct StagePlace {
    std::string_view name;  // into the file's text
    StageRange range;
    bool by_age;
};
using StageTable = std::vector<StagePlace>;

// Of a definition file, for a sex (1: male) and a set.
StageTable stage_table(std::string_view file, int sex, bool second);

// The last of the stages that hold x, as Analysis::stage_of has it.
std::optional<int> place_in(const StageTable& table, double x);

// Ranges within which each of the tables, all by age or all by dental stage, keeps to one stage, and one at least has
// one.
std::vector<StageRange> cut_at_all_borders(const std::set<const StageTable*>& tables, bool by_age);

// As a definition file has it: "6-9.5", "18-", "IIIA-IVA".
std::string range_text(const StageRange& stage, bool by_age);

}  // namespace tool
