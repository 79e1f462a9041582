// What the file of an X-ray says, read for the cases.
#pragma once

#include <film/film_scale.h>

#include "cases/case_film.h"

namespace cephtool {

// For CaseOptions::film_facts. Of DICOM films the header is taken, of others the resolution where it is asked for.
std::function<std::optional<FilmFacts>(const std::string& file)> film_reader(FilmScaleUse use,
                                                                             std::optional<double> magnification);

// The scale in words: where it is taken from, and whether magnification is out of it.
Remark scale_remark(const tool::FilmScale& scale);

// The patient of a header; texts are made safe to show.
FilmFacts patient_facts(const tool::FilmPatient& patient);

}  // namespace cephtool
