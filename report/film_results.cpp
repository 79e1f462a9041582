#include "report/film_results.h"

#include <algorithm>

namespace cephtool {

namespace {

using Times = std::vector<const AnalysisResult*>;

std::vector<Times> analyses_of(const std::vector<FilmResults>& films, bool fruitful) {
    std::vector<Times> all;
    for (std::size_t i = 0; i < films.front().result.analyses.size(); ++i) {
        Times times;
        for (const FilmResults& film : films) times.push_back(&film.result.analyses[i]);
        const bool any = std::ranges::any_of(times, [](const AnalysisResult* time) {
            return std::ranges::any_of(time->items, &Measurement::has_result);
        });
        if (any == fruitful) all.push_back(std::move(times));
    }
    return all;
}

}  // namespace

std::vector<std::string> remarks_on(const std::vector<FilmResults>& films, const Texts& texts) {
    std::vector<std::span<const Remark>> remarks;
    for (const FilmResults& film : films) remarks.emplace_back(film.record().remarks);
    return texts.remarks(remarks);
}

std::vector<Times> fruitful_analyses(const std::vector<FilmResults>& films) {
    return analyses_of(films, true);
}

std::vector<LeftOut> left_out_analyses(const std::vector<FilmResults>& films) {
    std::vector<LeftOut> all;
    for (const Times& times : analyses_of(films, false)) all.push_back(left_out(times));
    return all;
}

}  // namespace cephtool
