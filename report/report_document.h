// The report of one case, or of one patient's cases at several times: patient, growth, tracing, tables with charts.
#pragma once

#include <string>
#include <vector>

#include "report/drawn_file.h"
#include "report/film_results.h"
#include "results/texts.h"

namespace cephtool {

// A PDF of A4 pages. Up to three films, which must be of one kind, oldest first.
std::string report_pdf(const std::vector<FilmResults>& films, const Texts& texts);

// The same pages in a document of HTML. Needs no Cairo; without it texts are broken by an estimate of their width.
std::string report_html(const std::vector<FilmResults>& films, const Texts& texts);

// The same pages as drawings, one each.
std::vector<std::string> report_svg(const std::vector<FilmResults>& films, const Texts& texts);

// Only the values and their charts, on one sheet of A4's width.
std::string chart_file(FileFormat format, const std::vector<FilmResults>& films, const Texts& texts);

}  // namespace cephtool
