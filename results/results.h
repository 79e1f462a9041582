// Measured cases as text: a table for people, JSON and CSV for programs. All UTF-8.
#pragma once

#include <span>
#include <string>

#include "results/measurement.h"

namespace cephtool {

// At most 80 columns wide. Values have one decimal, or two where the norm has two or there is no unit; deviations
// have two, and one star for every whole SD. With `colour`, deviations are green to 1 SD, amber to 2 and red beyond.
std::string results_table(const CaseResult& result, bool colour);

// One document for all cases. Numbers have as many digits as give the same double again; what there is none of, or
// what is not finite, is null.
std::string results_json(std::span<const CaseResult> results);

// One row an item, after RFC 4180 with line ends CR LF; what there is none of is empty.
std::string results_csv(std::span<const CaseResult> results);

}  // namespace cephtool
