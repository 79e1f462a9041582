// What changes how numbers are to be read: a mirrored film, norms that were left out. It stands in every output, in the
// output's language. What only tells how a file was read is a note of the case.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace cephtool {

struct Remark {
    std::string code;                      // short and stable, for programs; docs/formats.md lists them
    std::string text;                      // in English, a row of the table in texts.cpp
    std::vector<std::string> values = {};  // what stands for its %1, %2 and %3

    bool operator==(const Remark&) const = default;
};

std::string in_english(const Remark& remark);

// "mirrored; norms_by_sex"
std::string codes_of(std::span<const Remark> remarks);

}  // namespace cephtool
