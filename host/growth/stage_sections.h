// What the growth stages of a definition file ask of a patient. The engine reads the stages themselves, but does not
// tell whether it had what they depend on.
#pragma once

#include <string_view>

namespace cephtool {

enum class StageSet { first = 1, second = 2 };

struct StageSections {
    bool any = false;
    bool sex = false;           // some stages are for one sex only
    bool age = false;           // in years
    bool dental_stage = false;  // every type of stages but "Age"
};

StageSections stage_sections(std::string_view definition, StageSet set);

}  // namespace cephtool
