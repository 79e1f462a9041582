// What the "Param:" lines of a definition file say about its norms' sample, its values' signs and its names:
//
//   Ages=12-17               whole years of age of the people that the norms were taken from; "18-" is open above
//   Population=Japanese      whose norms these are
//   Variant of=Steiner.txt   has norms of another population for the analysis of that file of the folder
//   Unverified SNA=words     the norm of the item SNA comes from a source that nobody here saw
//   Sign SNA=words           what a positive value of the item SNA means
//   Japanese SNA=name        the Japanese name of an item, a heading, a stage or the text of a finding; of "Comment"
//                            the comment's first line
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

// Those with a blank at the end go on with a name.
inline constexpr std::string_view ages_key = "Ages", population_key = "Population", variant_key = "Variant of",
                                  unverified_key = "Unverified ", sign_key = "Sign ", japanese_key = "Japanese ";
inline constexpr std::string_view sample_keys[] = {ages_key,       population_key, variant_key,
                                                   unverified_key, sign_key,       japanese_key};

// Views into the file's text.
struct Sample {
    using ByName = std::map<std::string_view, std::string_view>;

    std::optional<AgeRange> ages;
    std::string_view population, variant_of;
    ByName signs, japanese, unverified;

    // "" for a name without a line.
    static std::string_view of(const ByName& lines, std::string_view name) {
        const auto line = lines.find(name);
        return line == lines.end() ? std::string_view() : line->second;
    }
};

// `file` is the text of a definition file.
Sample sample_of(std::string_view file);

}  // namespace tool
