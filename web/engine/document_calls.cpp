#include "web/engine/calls.h"

#include <emscripten/bind.h>

#include "cases/mirror.h"
#include "results/results.h"
#include "web/engine/answer.h"
#include "web/engine/arguments.h"
#include "web/engine/fault.h"
#include "web/engine/readings.h"

namespace engine {
namespace {

using cephtool::Case;
using emscripten::val;

std::vector<FilmToReport> films_of(const val& films) {
    std::vector<FilmToReport> all;
    for (unsigned i = 0, count = films["length"].as<unsigned>(); i < count; ++i)
        all.push_back({case_of(films[i]["record"].as<std::string>()), film_of(films[i]["film"])});
    return all;
}

std::string report(const val& films, const std::string& analyses, const std::string& language) {
    return answer([&] { return report_drawings(films_of(films), analyses_in(analyses), texts_in(language)); });
}

std::string chart(const val& films, const std::string& analyses, const std::string& language) {
    return answer([&] { return chart_drawing(films_of(films), analyses_in(analyses), texts_in(language)); });
}

std::string results(const std::string& records, const std::string& analyses, const std::string& format,
                    const std::string& language) {
    return answer([&] {
        const cephtool::Texts texts = texts_in(language);
        const auto chosen = analyses_in(analyses);
        std::vector<cephtool::CaseResult> all;
        for (Case& record : cases_of(records)) {
            if (!record.mm_per_pixel)
                throw Fault("no_scale", "the case has no scale, so no length can be measured",
                            "Calibrate the film first.");
            record.file = record.name;
            all.push_back(cephtool::measured(cephtool::turned_right(std::move(record), {}), chosen, {}, false));
        }
        return Json(format == "csv" ? cephtool::results_csv(all, texts) : cephtool::results_json(all, texts));
    });
}

std::string compare_readings(const std::string& first, const std::string& second, const std::string& analyses) {
    return answer([&] { return comparison_of_readings(case_of(first), case_of(second), analyses_in(analyses)); });
}

std::string study(const std::string& films, const std::string& analyses, const std::string& format) {
    return answer([&] {
        std::vector<cephtool::StudyFilm> all;
        for (const Json& film : Json::parse(films)) {
            all.push_back({film["name"].get<std::string>(), cases_of(film["readings"].dump())});
        }
        return study_of(all, analyses_in(analyses), format);
    });
}

}  // namespace

void add_document_calls() {
    using emscripten::function;
    function("report", &report);
    function("chart", &chart);
    function("results", &results);
    function("compareReadings", &compare_readings);
    function("study", &study);
}

}  // namespace engine
