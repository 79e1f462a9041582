// What the "Param:" lines of a definition file say about its norms' sample and its values' signs:
//
//   Ages=12-17          whole years of age of the people that the norms were taken from; "18-" is open above
//   Sign SNA=words      what a positive value of the item SNA means
//
// Any other line of these sections is for other hosts. The first line of a name counts.
#pragma once

#include <map>
#include <optional>
#include <string_view>

namespace tool {

struct AgeRange {
    int from = 0;           // completed years
    std::optional<int> to;  // likewise, and included
};

// Nothing for anything but "from-to" or "from-", in whole years up to 150.
std::optional<AgeRange> age_range_of_sample(std::string_view text);

inline constexpr std::string_view ages_key = "Ages", sign_key = "Sign ";

struct Sample {
    std::optional<AgeRange> ages;
    std::map<std::string_view, std::string_view> signs;  // by item; views into the file's text
};

// `file` is the text of a definition file.
Sample sample_of(std::string_view file);

}  // namespace tool
