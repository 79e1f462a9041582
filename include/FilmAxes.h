// Addition of this project: the directions of a film that the errors of landmarks are told in.
#pragma once

#include "LandmarkErrors.h"
#include "MeasuredAnalysis.h"
#include "framework/export.h"

namespace tool {

// Of unit length, in pixels with y down: along Frankfort towards the face, and across it upwards where the face looks
// right; of kinds other than lateral, across and up the film.
struct FilmAxes {
    ErrorAxes from = ErrorAxes::film;
    FilmPoint along{1, 0}, across{0, -1};
};

TOOL_API Result<FilmAxes> film_axes(Kind kind, const Subject& subject);

}  // namespace tool
