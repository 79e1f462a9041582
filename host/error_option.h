// The errors of landmarks that a command line asks for.
#pragma once

#include <LandmarkErrors.h>

#include <optional>
#include <string>

#include "host/command_line.h"
#include "results/analysis_folder.h"

namespace cephtool {

struct ErrorOption {
    bool wanted = false;
    std::string file;  // in place of that of the analysis folder
    bool measured_only = false;
};

// "--error", "--error-file" and "--no-assumed"; a command that has its own way of asking adds only the last two.
void add_error_options(CommandLine& line, ErrorOption& option);
void add_error_file(CommandLine& line, ErrorOption& option);

// Nothing when they are not wanted. Throws an Error when there are none, or the file can't be read throughout.
std::optional<tool::LandmarkErrors> landmark_errors(const ErrorOption& option, const AnalysisFolder& folder,
                                                    std::istream& standard_input);

}  // namespace cephtool
