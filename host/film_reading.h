// What the file of an X-ray says, read for the cases.
#pragma once

#include <film/film_scale.h>

#include "cases/case_film.h"

namespace cephtool {

// Throws an Error when the file can't be read or begins as no X-ray does.
void check_film(const std::string& path);

// For CaseOptions::film_facts. Of DICOM films the header is taken, of others the resolution where it is asked for.
std::function<std::optional<FilmFacts>(const std::string& file)> film_reader(FilmScaleUse use,
                                                                             std::optional<double> magnification);

// What is doubtful about the scale of a film whose longer side has so many pixels, 0 where that is not known, and whose
// file holds so many pictures.
std::vector<Remark> scale_doubts(const tool::FilmScale& scale, int longest_px, int pictures);

// The scale in words: where it is taken from, and whether magnification is out of it.
Remark scale_remark(const tool::FilmScale& scale);

// The patient of a header; texts are made safe to show.
FilmFacts patient_facts(const tool::FilmPatient& patient);

}  // namespace cephtool
