#include "host/report/film_results.h"

#include <algorithm>

namespace cephtool {

std::vector<std::vector<const AnalysisResult*>> fruitful_analyses(const std::vector<FilmResults>& films) {
    std::vector<std::vector<const AnalysisResult*>> all;
    for (std::size_t i = 0; i < films.front().result.analyses.size(); ++i) {
        std::vector<const AnalysisResult*> times;
        for (const FilmResults& film : films) times.push_back(&film.result.analyses[i]);
        const bool fruitful = std::ranges::any_of(times, [](const AnalysisResult* time) {
            return std::ranges::any_of(time->items, &Measurement::has_result);
        });
        if (fruitful) all.push_back(std::move(times));
    }
    return all;
}

}  // namespace cephtool
