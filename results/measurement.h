// What the analyses say about a case: every item's value, norm and deviation, or the reason why there is none.
#pragma once

#include <MeasuredAnalysis.h>
#include <ResultList.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cases/case.h"
#include "results/analysis_folder.h"
#include "results/growth.h"
#include "results/texts.h"

namespace cephtool {

// A row of the library's result list in UTF-8. Numbers that there are none of are empty, their texts "".
struct Measurement {
    bool heading = false;  // of the rows below it; then only the name counts
    std::string name;
    std::string japanese = {};  // what it is called in Japanese; "" when the file does not say
    std::string unit;           // "deg", "mm", "%", "SD" or ""
    int column = 0;             // 0..2, the value column that the item's author wants
    bool marked = false;
    std::string sign = {};  // what a positive value means, in English and in brackets in Japanese; "" when not told
    std::optional<double> value;
    std::string text;                // the verdict of an item that has one in place of a value
    std::string text_japanese = {};  // that in Japanese, likewise
    std::string unverified = {};     // why the norm is to be doubted, as `sign`; "" for one whose source was seen
    std::optional<double> mean, sd;
    std::optional<double> deviation;                                    // of the value from the mean, in SD
    std::string value_text, mean_text, sd_text, deviation_text, stars;  // as ResultRow has them, and marks on the mean
    std::vector<std::string> missing;       // landmarks that the value needs and the case lacks
    std::vector<std::string> norm_missing;  // the same for the norm
    Remark reason = {};                     // why there is no value, when no landmark is missing; without a text: none
    std::vector<Remark> remarks = {};
    std::optional<tool::ValueError> error = {};  // of the value, where errors were asked for

    // "82.8 ± 1.2", where the error is known; "82.8 (± 1.2)" where it rests on assumed ones.
    std::string value_with_error() const;
    // In brackets where the deviation may as well be none.
    std::string stars_with_error() const;
    // What the error says in words: the landmark that it is mostly owed to, that the deviation may be none, or why
    // there is no error.
    std::vector<Remark> error_remarks() const;
    bool has_result() const { return value || !text.empty(); }
};

struct AnalysisResult {
    const Analysis* analysis;
    NormBand band;
    std::vector<Measurement> items;  // in the definition's order

    std::span<const Remark> remarks() const { return band.remarks; }
};

// An analysis of which no item can be computed.
struct LeftOut {
    const Analysis* analysis = nullptr;
    std::size_t items = 0;                  // headings not counted
    std::vector<std::string> missing = {};  // landmarks, in the order in which the items ask for them

    // "Steiner: none of its 16 items can be measured, missing S, N, A and 7 more", in at most 80 columns
    std::string in_words(const Texts& texts) const;
};

struct CaseResult {
    Case record;  // measuring adds to what is remarked on it
    std::vector<AnalysisResult> analyses;
    std::vector<LeftOut> left_out;
};

// Measures the case by those of the analyses that are for its kind, with norms of its population where there are any.
// `band` is the engine's norm column code; without it the patient's stages choose the column. With `only_fruitful`,
// analyses of which no item can be computed go to `left_out`. The analyses must outlive the result. With `errors` of
// landmarks values have errors.
CaseResult measured(Case record, std::span<const AnalysisFamily> analyses, std::optional<int> band, bool only_fruitful,
                    const tool::LandmarkErrors* errors = nullptr);

// By just these analyses, whatever the population.
CaseResult measured(Case record, std::span<const Analysis* const> analyses, std::optional<int> band, bool only_fruitful,
                    const tool::LandmarkErrors* errors = nullptr);

// Whether errors were asked for, and there are values.
bool has_errors(const CaseResult& result);

// The results are those of one analysis, one a film, none of them with a result.
LeftOut left_out(std::span<const AnalysisResult* const> films);

// Why there is no value although no landmark is missing; without a text for states that have one, or no reason.
// `degenerate` are the two points or lines that the state speaks of.
Remark reason_of(ResultState state, const std::string (&degenerate)[2]);

// That norms which differ between men and women are left out.
Remark norms_by_sex();

}  // namespace cephtool
