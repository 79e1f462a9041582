#include "host/error_option.h"

#include "results/landmark_error_file.h"

namespace cephtool {

void add_error_options(CommandLine& line, ErrorOption& option) {
    line.add_flag("--error", option.wanted, "with the standard error of each value, from\nthose of the landmarks");
    add_error_file(line, option);
}

void add_error_file(CommandLine& line, ErrorOption& option) {
    line.add_text("--error-file", "FILE", option.file,
                  "these errors of landmarks in place of the\nfolder's LandmarkError.txt");
    line.add_flag("--no-assumed", option.measured_only,
                  "no errors of values that rest on landmarks\nwhose error nobody measured");
}

namespace {

std::optional<tool::LandmarkErrors> all_landmark_errors(const ErrorOption& option, const AnalysisFolder& folder,
                                                        std::istream& standard_input) {
    if (!option.wanted && option.file.empty()) return std::nullopt;
    if (option.file.empty()) return landmark_errors_of(folder);
    return landmark_errors_in(read_bytes(option.file, standard_input));
}

}  // namespace

std::optional<tool::LandmarkErrors> landmark_errors(const ErrorOption& option, const AnalysisFolder& folder,
                                                    std::istream& standard_input) {
    const auto errors = all_landmark_errors(option, folder, standard_input);
    return errors && option.measured_only ? errors->measured() : errors;
}

}  // namespace cephtool
