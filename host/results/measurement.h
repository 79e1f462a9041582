// What the analyses say about a case: every item's value, norm and deviation, or the reason why there is none.
#pragma once

#include <ResultList.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/case/case.h"
#include "host/catalogue.h"
#include "host/growth/growth.h"

namespace cephtool {

// A row of the library's result list in UTF-8. Numbers that there are none of are empty, their texts "".
struct Measurement {
    bool heading = false;  // of the rows below it; then only the name counts
    std::string name;
    std::string unit;  // "deg", "mm", "%", "SD" or ""
    int column = 0;    // 0..2, the value column that the item's author wants
    bool marked = false;
    std::optional<double> value;
    std::string text;  // the verdict of an item that has one in place of a value
    std::optional<double> mean, sd;
    std::optional<double> deviation;                                    // of the value from the mean, in SD
    std::string value_text, mean_text, sd_text, deviation_text, stars;  // as ResultRow has them
    std::vector<std::string> missing;       // landmarks that the value needs and the case lacks
    std::vector<std::string> norm_missing;  // the same for the norm
    std::string reason;                     // why there is no value, when no landmark is missing

    bool has_result() const { return value || !text.empty(); }
};

struct AnalysisResult {
    const Analysis* analysis;
    NormBand band;
    std::vector<Measurement> items;  // in the definition's order
};

struct CaseResult {
    Case record;
    bool norms_differ = false;  // some were left out: the sex is not given and men's and women's are not the same
    std::vector<AnalysisResult> analyses;
};

// Measures the case by those of the analyses that are for its kind. `band` is the engine's norm column code; without it
// the patient's stages choose the column. With `only_fruitful`, analyses of which no item can be computed are left out.
// The analyses must outlive the result.
CaseResult measured(Case record, std::span<const Analysis* const> analyses, std::optional<int> band,
                    bool only_fruitful);

}  // namespace cephtool
