// What changes how numbers are to be read: a mirrored film, norms that were left out. It stands in every output, in the
// output's language. What only tells how a file was read is a note of the case.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cephtool {

struct Remark {
    std::string code;  // short and stable, for programs; docs/formats.md lists them
    // In English, a row of results/text_table.cpp. Behind "%*" stands a list of words that are rows themselves, behind
    // "%&" the name of a population.
    std::string text;
    std::vector<std::string> values = {};  // what stands for its %1, %2 and %3

    bool operator==(const Remark&) const = default;
};

// "%1" is the first of the values; what they hold is not looked at again.
std::string filled(std::string_view text, std::span<const std::string> values);

std::string in_english(const Remark& remark);

// "mirrored; norms_by_sex"
std::string codes_of(std::span<const Remark> remarks);

}  // namespace cephtool
