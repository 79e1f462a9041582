#include "host/error_option.h"

#include <CodePage.h>
#include <DefinitionCheck.h>

#include <algorithm>

#include "base/path.h"
#include "base/source.h"
#include "base/wording.h"

namespace cephtool {

void add_error_options(CommandLine& line, ErrorOption& option) {
    line.add_flag("--error", option.wanted, "with the standard error of each value, from\nthose of the landmarks");
    add_error_file(line, option);
}

void add_error_file(CommandLine& line, ErrorOption& option) {
    line.add_text("--error-file", "FILE", option.file,
                  "these errors of landmarks in place of the\nfolder's LandmarkError.txt");
}

std::optional<tool::LandmarkErrors> landmark_errors(const ErrorOption& option, const AnalysisFolder& folder,
                                                    std::istream& standard_input) {
    if (!option.wanted && option.file.empty()) return std::nullopt;
    if (option.file.empty()) {
        if (!folder.landmark_errors().all().empty()) return folder.landmark_errors();
        throw Error(ExitCode::bad_input,
                    printable(utf8_from_path(folder.path() / "LandmarkError.txt")) +
                        " can't be read, or holds no landmark's error",
                    "Name a file with --error-file; \"cephtool reliability\" makes one from your own readings.");
    }
    const Source source = read_bytes(option.file, standard_input);
    const CheckResult check =
        DefinitionCheck::Text(CheckFamily::landmark_errors, -1, source.text.data(), source.text.size());
    const auto fault = std::ranges::find(check.findings, false, &CheckFinding::note);
    if (fault != check.findings.end()) {
        throw Error(ExitCode::bad_input,
                    printable(option.file) + ":" + std::to_string(fault->line) + ": " +
                        printable(Utf8FromCodePage932(fault->message)),
                    "docs/errors.md says how the errors of landmarks are written.");
    }
    tool::LandmarkErrors errors = tool::LandmarkErrors::from_text(source.text);
    if (!errors.all().empty()) return errors;
    throw Error(ExitCode::bad_input, printable(option.file) + " holds no landmark's error",
                "docs/errors.md says how the errors of landmarks are written.");
}

}  // namespace cephtool
