// What is known of one film: the case, its results, growth, tracing and picture.
#pragma once

#include <optional>
#include <vector>

#include "report/film.h"
#include "results/finding.h"
#include "results/measurement.h"
#include "tracing/tracing.h"

namespace cephtool {

struct FilmResults {
    CaseResult result;  // of the chosen analyses, those without any value included
    std::vector<Finding> growth;
    Tracing tracing;
    std::optional<Film> film;

    const Case& record() const { return result.record; }
};

// What is remarked on the films' cases.
std::vector<std::string> remarks_on(const std::vector<FilmResults>& films, const Texts& texts);

// The results of the analyses that any of the films has a value of, each with one entry a film; the others.
std::vector<std::vector<const AnalysisResult*>> fruitful_analyses(const std::vector<FilmResults>& films);
std::vector<LeftOut> left_out_analyses(const std::vector<FilmResults>& films);

}  // namespace cephtool
