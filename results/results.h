// Measured cases as text: a table for people, JSON and CSV for programs. All UTF-8.
#pragma once

#include <span>
#include <string>

#include "results/measurement.h"

namespace cephtool {

// At most 80 columns wide. Values have one decimal, or two where the norm has two or there is no unit; deviations
// have two, and one star for every whole SD. With `colour`, deviations are green to 1 SD, amber to 2 and red beyond.
std::string results_table(const CaseResult& result, bool colour, const Texts& texts);

// One document for all cases. Names of items and texts of findings are the file's, and beside them stand what they are
// called in the language ("label", "text_label"). Numbers have as many digits as give the same double again; what there
// is none of, or what is not finite, is null.
std::string results_json(std::span<const CaseResult> results, const Texts& texts);

// One row an item, with its name in the file and in the language, after RFC 4180 with line ends CR LF; what there is
// none of is empty.
std::string results_csv(std::span<const CaseResult> results, const Texts& texts);

}  // namespace cephtool
