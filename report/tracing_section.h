// Tracings on the pages of a report: one over its film, several side by side and laid over each other.
#pragma once

#include "report/film_results.h"
#include "report/pages.h"

namespace cephtool {

// In what is left of the page, or on a new one when that is too little. The films must outlive the pages.
void add_tracings(Pages& pages, const std::vector<FilmResults>& films);

// One page with three superimpositions on the first film; nothing of films without outlines and of kinds that have no
// lines to register on.
void add_superimpositions(Pages& pages, const std::vector<FilmResults>& films);

}  // namespace cephtool
