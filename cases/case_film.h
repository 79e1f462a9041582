// What a case takes from the file of its X-ray: the scale, and what it lacks of the patient.
#pragma once

#include <optional>
#include <string>

#include "cases/case.h"

namespace cephtool {

// What such a file says. Who reads cases hands in what reads films (CaseOptions::film_facts), so that cases need none
// of the libraries for pictures. Texts are safe to show.
struct FilmFacts {
    std::string file;     // as messages name it
    std::string failure;  // why it can't be read, a sentence
    std::string name;
    std::optional<Sex> sex = {};
    std::optional<Date> birth = {}, film = {};
    std::optional<Side> side = {};
    std::optional<double> mm_per_pixel = {};
    double least_mm = 0, most_mm = 0;         // the scales at the patient that agree with it
    std::optional<Remark> scale_remark = {};  // where it was taken from, and whether magnification is out of it
    std::string scale_source;                 // in words, of tags
    std::string scale_error;                  // what the file says against itself, a sentence
    std::vector<Remark> scale_doubts = {}, patient_doubts = {};
};

// Of the X-ray that the options or the case name; nothing when they name none, or one that says nothing of itself.
// Throws an Error when that of the options can't be read; of that of the case it is remarked.
std::optional<FilmFacts> facts_of_film(Case& record, const Source& source, const CaseOptions& options);

// Name, sex, dates and side where the case has none. What was taken is remarked, and what contradicts the case.
void complete_patient(Case& record, const Source& source, const FilmFacts& film);

// The scale of the options, else that of the case, else that of the film. Throws an Error when there is none and when
// case and film contradict each other.
void settle_scale(Case& record, const Source& source, const CaseOptions& options, const std::optional<FilmFacts>& film);

// The name under which a case finds the X-ray `image`, seen from where its own file lies.
std::string image_seen_from(const std::string& case_file, const std::string& image);

}  // namespace cephtool
