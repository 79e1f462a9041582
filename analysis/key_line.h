// Key lines of analysis definition files.
#pragma once

#include <string_view>

namespace tool {

// What a section of a definition file holds. The second set's sections have the same codes plus 100.
enum SectionCode {
    content_line = 0,
    title_section = 1,
    items_section = 2,
    stages_section = 3,
    stages_male_section = 4,
    stages_female_section = 5,
    mean_section = 6,
    mean_male_section = 7,
    mean_female_section = 8,
    sd_section = 9,
    sd_male_section = 10,
    sd_female_section = 11,
    stage_type_section = 12,
    comment_section = 13,
    diagnosis_section = 14,
    parameter_section = 15,
    second_set = 100
};

// Code of a key line, content_line for any other. Without regard to case, but the whole line must be the key:
// "title: Downs" and " title:" are content.
int key_code(std::string_view line);

}  // namespace tool
