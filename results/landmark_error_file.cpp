#include "results/landmark_error_file.h"

#include <CodePage.h>
#include <DefinitionCheck.h>

#include <algorithm>

#include "base/path.h"
#include "base/wording.h"

namespace cephtool {

tool::LandmarkErrors landmark_errors_in(const Source& source) {
    const std::string way_out = "docs/errors.md says how the errors of landmarks are written.";
    const CheckResult check =
        DefinitionCheck::Text(CheckFamily::landmark_errors, -1, source.text.data(), source.text.size());
    const auto fault = std::ranges::find(check.findings, false, &CheckFinding::note);
    if (fault != check.findings.end()) {
        Error error = source.error(printable(Utf8FromCodePage932(fault->message)), way_out);
        error.line = fault->line;
        error.column = std::max(fault->column, 1);
        throw error;
    }
    tool::LandmarkErrors errors = tool::LandmarkErrors::from_text(source.text);
    if (errors.all().empty()) throw source.error("the file holds no landmark's error", way_out);
    return errors;
}

tool::LandmarkErrors landmark_errors_of(const AnalysisFolder& folder) {
    if (!folder.landmark_errors().all().empty()) return folder.landmark_errors();
    throw Error(
        ExitCode::bad_input,
        printable(utf8_from_path(folder.path() / "LandmarkError.txt")) + " can't be read, or holds no landmark's error",
        "Name a file with --error-file; \"cephtool reliability\" makes one from your own readings.");
}

}  // namespace cephtool
