// Growth stages: Hellman's dental stages and the stage sections of definition files.
//
// 1. A stage section lies below "Stage:" (both sexes), "Stage_M:" or "Stage_F:". Its lines are "name=range"; an empty
//    line is no stage.
// 2. The line below "Stage_Type:" says what the ranges that follow are of: "Age" (the start) years, anything else
//    another quantity.
// 3. A range is "from-to", without its upper end, or "from" alone, which is open above.
// 4. Any key line ends a section. Kept: it is not itself tried as an opener, so two stage sections need a line of
//    another kind in between.
#pragma once

#include <functional>
#include <iterator>
#include <string_view>

#include "analysis/definition_file.h"

namespace tool {

// As Hellman's stages follow each other (Am J Orthod 1927;13:429-451).
inline constexpr std::string_view dental_stages[] = {"I", "IIA", "IIC", "IIIA", "IIIB", "IIIC", "IVA", "IVC", "VA"};
inline constexpr double no_dental_stage = std::size(dental_stages);
// The place among them; no_dental_stage for any other text. Blanks around it do not matter, case does.
double dental_stage_ordinal(std::string_view text);

inline constexpr std::size_t longest_stage_name = 49;  // bytes

struct StageLine {
    std::string_view name;  // its first bytes, where it is longer
    std::string_view range;
    bool by_age;
};

// The stages of a set for a sex (1 male, else female), in the order of the file.
// Kept: for the second set 100 is taken off every code, so that first-set key lines count as stages there.
void for_each_stage(std::string_view file, int sex, bool of_second_set,
                    const std::function<void(const StageLine&)>& visit);

struct StageRange {
    double from = 0, to = 0;
    bool contains(double x) const { return from <= x && x < to; }
};

// How an upper bound of 0 is read. Kept: the two readers differ.
enum class ZeroBound {
    open_above,                 // 0 or less is no bound
    open_above_a_nonzero_start  // exactly 0 is no bound unless the range also starts at 0
};
StageRange age_range(std::string_view range, ZeroBound zero);
// Bounds are dental stages.
StageRange dental_range(std::string_view range);

}  // namespace tool
