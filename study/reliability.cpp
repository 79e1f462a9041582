#include "study/reliability.h"

#include <FilmAxes.h>

#include <algorithm>
#include <cmath>

#include "cases/case_record.h"

namespace cephtool {
namespace {

const Landmark* find(const Case& record, const std::string& name) {
    for (const auto* all : {&record.landmarks, &record.user})
        for (const Landmark& landmark : *all)
            if (landmark.name == name) return &landmark;
    return nullptr;
}

std::vector<std::string> landmark_names(std::span<const StudyFilm> films) {
    std::vector<std::string> names;
    for (const StudyFilm& film : films)
        for (const Case& record : film.readings)
            for (const auto* all : {&record.landmarks, &record.user})
                for (const Landmark& landmark : *all)
                    if (std::ranges::find(names, landmark.name) == names.end()) names.push_back(landmark.name);
    return names;
}

// A film's axes, and what coordinates count from.
struct Frame {
    tool::FilmAxes axes;
    Position middle;
    double mm;

    explicit Frame(const StudyFilm& film) : mm(*film.readings.front().mm_per_pixel) {
        const Case& first = film.readings.front();
        if (const auto found = tool::film_axes(static_cast<tool::Kind>(first.kind), subject_of(first))) axes = *found;
        double count = 0;
        for (const Landmark& landmark : first.landmarks) {
            if (!std::ranges::all_of(film.readings, [&](const Case& each) { return find(each, landmark.name); }))
                continue;
            middle.x += landmark.position.x, middle.y += landmark.position.y;
            ++count;
        }
        if (count > 0) middle = {middle.x / count, middle.y / count};
    }
    Position operator()(Position p) const {
        const double x = (p.x - middle.x) * mm, y = (p.y - middle.y) * mm;
        return {x * axes.along.x + y * axes.along.y, x * axes.across.x + y * axes.across.y};
    }
};

// Adds the landmark when enough films have it.
void add_landmark(Study& study, const std::string& name, std::span<const StudyFilm> films,
                  const std::vector<Frame>& frames) {
    StudyLandmark landmark{.name = name, .along = {}, .across = {}};
    Readings along, across;
    for (std::size_t i = 0; i < films.size(); ++i) {
        std::vector<double> x, y;
        for (const Case& record : films[i].readings) {
            const Landmark* const found = find(record, name);
            if (!found) break;
            const Position at = frames[i](found->position);
            x.push_back(at.x), y.push_back(at.y);
        }
        if (x.size() < study.readings) {
            ++landmark.films_left_out;
            continue;
        }
        Position mean;
        for (std::size_t r = 0; r < x.size(); ++r)
            mean.x += x[r] / static_cast<double>(x.size()), mean.y += y[r] / static_cast<double>(x.size());
        for (std::size_t r = 0; r < x.size(); ++r) {
            landmark.from_mean.push_back({x[r] - mean.x, y[r] - mean.y});
            landmark.radial += std::hypot(x[r] - mean.x, y[r] - mean.y);
        }
        along.push_back(std::move(x)), across.push_back(std::move(y));
    }
    const auto of_along = agreement(along, study.repeats), of_across = agreement(across, study.repeats);
    if (!of_along || !of_across) return;
    landmark.along = *of_along, landmark.across = *of_across;
    landmark.radial /= static_cast<double>(landmark.from_mean.size());
    study.landmarks.push_back(std::move(landmark));
}

// Adds the items of an analysis that enough films have values of.
void add_items(Study& study, const Analysis& analysis, std::span<const StudyFilm> films) {
    const Analysis* const one[] = {&analysis};
    std::vector<std::vector<std::vector<Measurement>>> all;  // film, reading, item
    for (const StudyFilm& film : films) {
        auto& readings = all.emplace_back();
        for (const Case& record : film.readings) {
            CaseResult result = measured(record, one, {}, false);
            if (result.analyses.empty()) return;  // of another kind
            readings.push_back(std::move(result.analyses.front().items));
        }
    }
    const auto& items = all.front().front();
    for (std::size_t item = 0; item < items.size(); ++item) {
        StudyItem found{
            .analysis = title_of(analysis), .name = items[item].name, .unit = items[item].unit, .agreement = {}};
        Readings values;
        for (const auto& film : all) {
            std::vector<double> of_film;
            for (const auto& reading : film)
                if (reading[item].value) of_film.push_back(*reading[item].value);
            if (of_film.size() == study.readings)
                values.push_back(std::move(of_film));
            else
                ++found.films_left_out;
        }
        const auto agreed = agreement(values, study.repeats);
        if (!agreed) continue;
        found.agreement = *agreed;
        found.values = std::move(values);
        found.of = &analysis, found.index = item;
        study.items.push_back(std::move(found));
    }
}

}  // namespace

Study studied(std::span<const StudyFilm> films, std::span<const Analysis* const> analyses, std::size_t repeats) {
    Study study{.kind = films.front().readings.front().kind,
                .films = films.size(),
                .readings = films.front().readings.size(),
                .landmarks = {},
                .items = {},
                .repeats = repeats};
    std::vector<Frame> frames(films.begin(), films.end());
    for (const std::string& name : landmark_names(films)) add_landmark(study, name, films, frames);
    for (const Analysis* analysis : analyses)
        if (case_kind(*analysis) == study.kind) add_items(study, *analysis, films);
    return study;
}

tool::LandmarkErrors errors_of(const Study& study, const std::string& source) {
    std::vector<tool::LandmarkError> errors;
    for (const StudyLandmark& landmark : study.landmarks) {
        if (landmark.name.size() > 5) continue;  // such as a vertebra's, which formulas name otherwise
        errors.push_back({.name = landmark.name,
                          .frontal = study.kind == Kind::frontal,
                          .along_mm = landmark.along.technical_error,
                          .across_mm = landmark.across.technical_error,
                          .readings = static_cast<int>(landmark.along.films * landmark.along.readings),
                          .source = source});
    }
    return tool::LandmarkErrors(errors);
}

}  // namespace cephtool
