// A reliability study to print: summary, the landmarks' scatter on the average face, plots of agreement.
#pragma once

#include <span>
#include <string>

#include "results/texts.h"
#include "study/reliability.h"

namespace cephtool {

enum class StudyFile { pdf, svg, html };

// PDF and HTML have A4 pages, SVG one sheet of A4's width. `items` are those that are plotted, of the study. Text can
// be selected. Throws an Error as drawn_file does.
std::string study_file(StudyFile form, const Study& study, std::span<const StudyItem* const> items, const Texts& texts);

}  // namespace cephtool
