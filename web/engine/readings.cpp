#include "web/engine/readings.h"

#include "study/reading_comparison.h"
#include "web/engine/fault.h"

namespace engine {
namespace {

using cephtool::Case;

void check(const Case& first, const Case& other) {
    if (other.kind != first.kind)
        throw Fault("kinds", "the readings are of unlike kinds", "Compare readings of the same film.");
    if (!first.mm_per_pixel || !other.mm_per_pixel)
        throw Fault("no_scale", "a reading has no scale, so no length can be measured", "Calibrate the film first.");
}

}  // namespace

Json comparison_of_readings(const Case& first, const Case& second,
                            const std::vector<const cephtool::Analysis*>& analyses) {
    check(first, second);
    const cephtool::ReadingComparison found = cephtool::compared(first, second, analyses);
    Json landmarks = Json::array(), values = Json::array();
    for (const auto& [name, along, across, distance] : found.landmarks)
        landmarks.push_back({{"name", name}, {"along", along}, {"across", across}, {"distance", distance}});
    for (const cephtool::ValueDifference& value : found.values)
        values.push_back({{"analysis", value.analysis},
                          {"item", value.item},
                          {"first", value.first},
                          {"second", value.second},
                          {"text", value.text},
                          {"difference", value.difference},
                          {"dahlberg", value.dahlberg}});
    return {{"landmarks", landmarks},
            {"dahlbergAlong", json_of(found.dahlberg_along)},
            {"dahlbergAcross", json_of(found.dahlberg_across)},
            {"values", values}};
}

Json study_of(const std::vector<cephtool::StudyFilm>& films, const std::vector<const cephtool::Analysis*>& analyses,
              const std::string& format) {
    constexpr std::size_t least_films = 3;
    if (films.size() < least_films) throw Fault("few_films", "fewer than three films were read twice");
    for (const cephtool::StudyFilm& film : films)
        for (const Case& reading : film.readings) {
            check(films.front().readings.front(), reading);
            if (reading.mm_per_pixel != film.readings.front().mm_per_pixel ||
                film.readings.size() != films.front().readings.size())
                throw Fault("scales_differ", "the readings of " + film.name + " have unlike scales",
                            "Readings are compared on the same picture with the same scale.", {film.name});
        }
    const cephtool::Study study = cephtool::studied(films, analyses);
    return format == "csv" ? Json(cephtool::study_csv(study)) : Json::parse(cephtool::study_json(study));
}

}  // namespace engine
