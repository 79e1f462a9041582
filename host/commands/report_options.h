// What the commands "report" and "chart" are told, and the films that they read for it.
#pragma once

#include <string>
#include <vector>

#include "host/case_option_flags.h"
#include "host/error_option.h"
#include "host/selection.h"
#include "report/film_results.h"
#include "results/texts.h"

namespace cephtool {

struct ReportOptions {
    std::string input, output, folder;
    Language language = Language::english;
    std::vector<std::string> others, analyses;
    ErrorOption error;

    Texts texts() const { return Texts(language); }
};

// Of "--image".
inline constexpr const char* x_rays_help = "X-ray of the case (JPEG, PNG, TIFF, DICOM);\nagain for those compared";

void add_report_options(CommandLine& line, ReportOptions& options);

// The case and those that it is compared with, measured, oldest first where all have a date. Notes go to `err`.
std::vector<FilmResults> measured_films(const ReportOptions& options, const CaseOptionFlags& case_options,
                                        const Selection& selection, Streams& streams);

}  // namespace cephtool
