// The head of a report: whose films they are, and how far the patient has grown.
#pragma once

#include "report/film_results.h"
#include "report/pages.h"

namespace cephtool {

// The case's name, else its file's.
std::string patient_name(const Case& record);

// "12.3 years", the stage's name, or a dash.
std::string finding_text(const Finding& finding, const Texts& texts);

void add_patient(Pages& pages, const std::vector<FilmResults>& films);
// "Film 1" with the mark that it has in charts, its day and the age, one line of the page.
void add_film_line(Pages& pages, std::size_t time, const Case& record);
// Only what could be found out; nothing when that is nothing.
void add_growth(Pages& pages, const std::vector<FilmResults>& films);

}  // namespace cephtool
