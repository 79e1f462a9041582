// What was found out about the growth of patients as text: a table for people, JSON and CSV for programs. All UTF-8.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cases/case.h"
#include "results/finding.h"
#include "results/texts.h"

namespace cephtool {

struct GrowthResult {
    Case record;
    std::vector<Finding> growth;
    std::vector<Finding> stages;  // of the analyses
};

// At most 80 columns wide, with a list of what is missing and how it is given. Ages have two decimals.
std::string growth_table(const GrowthResult& result, bool colour, const Texts& texts);

// One document for all cases. Numbers have as many digits as give the same double again; what there is none of is null.
std::string growth_json(std::span<const GrowthResult> results, const Texts& texts);

// One row a finding, after RFC 4180 with line ends CR LF; what there is none of is empty.
std::string growth_csv(std::span<const GrowthResult> results, const Texts& texts);

}  // namespace cephtool
