#include "host/growth/stage_sections.h"

#include <CephCalc.h>

#include <algorithm>
#include <string>

namespace cephtool {
namespace {

// Codes of the key lines, as CCephCalc::Str_Check gives them; those of the second set are higher by 100.
constexpr int stages_of_both = 3, stages_of_women = 5, stage_type = 12, second_set = 100;

}  // namespace

StageSections stage_sections(std::string_view definition, StageSet set) {
    StageSections found;
    bool in_section = false, type_follows = false, by_age = true;
    while (!definition.empty()) {
        const std::size_t end = std::min(definition.find('\n'), definition.size());
        std::string line(definition.substr(0, end));
        definition.remove_prefix(std::min(end + 1, definition.size()));
        if (line.ends_with('\r')) line.pop_back();
        int code = CCephCalc::Str_Check(line.c_str());
        if (set == StageSet::second) code = std::max(code - second_set, 0);
        if (type_follows) {
            by_age = line == "Age";
            type_follows = false;
        } else if (code == stage_type) {
            type_follows = true;
        } else if (in_section) {
            in_section = code == 0;  // the key line that ends a section does not open another
        } else if (code >= stages_of_both && code <= stages_of_women) {
            in_section = found.any = true;
            found.sex = found.sex || code != stages_of_both;
            (by_age ? found.age : found.dental_stage) = true;
        }
    }
    return found;
}

}  // namespace cephtool
