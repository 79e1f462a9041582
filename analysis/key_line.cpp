#include "analysis/key_line.h"

#include "platform/text.h"

namespace tool {
namespace {

struct Key {
    std::string_view text;
    int code;
};

// The "1" forms are synonyms of the bare keys; Comment, Diag and Param have none.
constexpr Key keys[] = {
    {"title:", title_section},
    {"Calc:", items_section},
    {"Calc1:", items_section},
    {"Stage:", stages_section},
    {"Stage1:", stages_section},
    {"Stage_M:", stages_male_section},
    {"Stage_M1:", stages_male_section},
    {"Stage_F:", stages_female_section},
    {"Stage_F1:", stages_female_section},
    {"Mean:", mean_section},
    {"Mean1:", mean_section},
    {"Mean_M:", mean_male_section},
    {"Mean_M1:", mean_male_section},
    {"Mean_F:", mean_female_section},
    {"Mean_F1:", mean_female_section},
    {"SD:", sd_section},
    {"SD1:", sd_section},
    {"SD_M:", sd_male_section},
    {"SD_M1:", sd_male_section},
    {"SD_F:", sd_female_section},
    {"SD_F1:", sd_female_section},
    {"Stage_Type:", stage_type_section},
    {"Stage_Type1:", stage_type_section},
    {"Comment:", comment_section},
    {"Diag:", diagnosis_section},
    {"Param:", parameter_section},
    {"Calc2:", second_set + items_section},
    {"Stage2:", second_set + stages_section},
    {"Stage_M2:", second_set + stages_male_section},
    {"Stage_F2:", second_set + stages_female_section},
    {"Mean2:", second_set + mean_section},
    {"Mean_M2:", second_set + mean_male_section},
    {"Mean_F2:", second_set + mean_female_section},
    {"SD2:", second_set + sd_section},
    {"SD_M2:", second_set + sd_male_section},
    {"SD_F2:", second_set + sd_female_section},
    {"Stage_Type2:", second_set + stage_type_section},
};

constexpr std::size_t shortest_key = 3, longest_key = 12;

}  // namespace

int key_code(std::string_view line) {
    if (line.size() < shortest_key || line.size() > longest_key || line.back() != ':') return content_line;
    for (const Key& key : keys)
        if (equal_ignoring_case(line, key.text)) return key.code;
    return content_line;
}

}  // namespace tool
