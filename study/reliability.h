// How reliable landmarks and values are that were read more than once on the same films.
#pragma once

#include <LandmarkErrors.h>

#include <span>
#include <string>
#include <vector>

#include "results/measurement.h"
#include "study/agreement.h"

namespace cephtool {

// A film as each reader placed its landmarks, on the same picture with the same scale.
struct StudyFilm {
    std::string name;
    std::vector<Case> readings;
};

struct StudyItem {
    std::string analysis, name, unit;
    std::size_t films_left_out = 0;  // that lack the value in some reading
    Agreement agreement;
    Readings values = {};          // of the films that are not left out
    const Analysis* of = nullptr;  // must outlive the study
    std::size_t index = 0;         // among its items
};

// A landmark in mm along and across Frankfort (FilmAxes.h) of the film's first reading, from the middle of the
// landmarks that all readings have.
struct StudyLandmark {
    std::string name;
    std::size_t films_left_out = 0;
    Agreement along, across;
    double radial = 0;                     // mean distance of a reading from the film's mean, mm
    std::vector<Position> from_mean = {};  // each reading's place less the film's mean: along, across
};

struct Study {
    Kind kind = Kind::lateral;
    std::size_t films = 0, readings = 0;
    std::vector<StudyLandmark> landmarks;
    std::vector<StudyItem> items;
    std::size_t repeats = 1;  // readings of each observer
};

// Landmarks and values that fewer than three films have in all readings are left out. All cases are of one kind and
// have scales. `repeats`, which divides the number of readings, as agreement takes it.
Study studied(std::span<const StudyFilm> films, std::span<const Analysis* const> analyses, std::size_t repeats = 1);

// The technical errors of the landmarks as LandmarkError.txt has them.
tool::LandmarkErrors errors_of(const Study& study, const std::string& source);

// As tables have them: "0.98 (0.93 to 1.00)" with `to` = " to "; "+0.12, p = 0.345"; "-0.98 to +1.22".
std::string icc_text(const std::optional<IntraclassCorrelation>& icc, const std::string& to);
std::string bias_text(const PairAgreement& pair);
std::string interval_text(const Interval& interval, const std::string& to);

// A table of at most 80 columns, rows of a CSV with all figures, and a document with all figures.
std::string study_table(const Study& study);
std::string study_csv(const Study& study);
std::string study_json(const Study& study);

}  // namespace cephtool
