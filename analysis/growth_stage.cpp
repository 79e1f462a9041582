#include "analysis/growth_stage.h"

#include <algorithm>

#include "platform/number_text.h"
#include "platform/text.h"
#include "util/key_value.h"

namespace tool {
namespace {

constexpr double open_age = 200, open_dental_stage = 100;

bool opens_stages(int code, int sex) {
    return code == stages_section || code == (sex == 1 ? stages_male_section : stages_female_section);
}

}  // namespace

double dental_stage_ordinal(std::string_view text) {
    const auto found = std::ranges::find(dental_stages, trimmed(text));
    return found == std::end(dental_stages) ? no_dental_stage : static_cast<double>(found - dental_stages);
}

void for_each_stage(std::string_view file, int sex, bool of_second_set,
                    const std::function<void(const StageLine&)>& visit) {
    bool in_section = false, type_follows = false, by_age = true;
    for_each_line(file, [&](std::string_view line, int code) {
        if (of_second_set) code = std::max(code - second_set, 0);
        if (type_follows) {
            by_age = line == "Age";
            type_follows = false;
        } else if (code == stage_type_section) {
            type_follows = true;
        } else if (!in_section) {
            in_section = opens_stages(code, sex);
        } else if (code != content_line) {
            in_section = false;
        } else if (!line.empty()) {
            const KeyValue parts = split_at_equals(line);
            visit({parts.key.substr(0, longest_stage_name), parts.value, by_age});
        }
        return false;
    });
}

StageRange age_range(std::string_view range, ZeroBound zero) {
    const std::size_t dash = range.find('-');
    if (dash == std::string_view::npos) return {read_double(range), range.empty() ? 0 : open_age};
    StageRange ages{read_double(range.substr(0, dash)), read_double(range.substr(dash + 1))};
    const bool open = zero == ZeroBound::open_above ? ages.to <= 0 : ages.to == 0 && ages.from != 0;
    if (open) ages.to = open_age;
    return ages;
}

StageRange dental_range(std::string_view range) {
    const std::size_t dash = range.find('-');
    const double from = dental_stage_ordinal(range.substr(0, dash));
    return {from, dash == std::string_view::npos ? open_dental_stage : dental_stage_ordinal(range.substr(dash + 1))};
}

}  // namespace tool
