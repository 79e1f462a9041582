// Lines of the "Param:" sections of definition files.
#pragma once

#include <optional>
#include <set>
#include <string_view>

#include "analysis/check/checked_file.h"

namespace tool {

// Of one file, in the order of its lines.
class ParameterCheck {
 public:
    explicit ParameterCheck(CheckedFile& file) : file_(file) {}

    // Lines of other hosts, which stand there, too, are passed over.
    void check(std::string_view line);
    // Behind the last line: what they lack together.
    void finish();

 private:
    void check_for_key(std::string_view line, std::string_view name);
    void check_named(std::string_view name, std::string_view key, std::string_view line, std::string_view value);

    CheckedFile& file_;
    std::set<std::string_view> met_;           // what stands in front of "="
    std::optional<std::string_view> variant_;  // the line
};

}  // namespace tool
