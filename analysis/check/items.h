// Lines of the item sections of definition files.
#pragma once

#include "analysis/check/checked_file.h"

namespace tool {

// `section` is the SectionCode of the section that the line stands in.
void check_item(std::string_view line, int section, CheckedFile& file);

}  // namespace tool
