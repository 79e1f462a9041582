// cephtool check: what the engine passes over in silence.
#include <CodePage.h>
#include <DefinitionCheck.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/library_name.h"
#include "base/paint.h"
#include "base/wording.h"
#include "host/command_line.h"
#include "host/output.h"
#include "results/analysis_folder.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

std::string utf8(const CString& text) {
    return printable(Utf8FromCodePage932(text));
}

CheckResult checked(const std::string& path) {
    const std::optional<CString> name = library_name(path);
    if (!name) {
        throw Error(ExitCode::bad_input, printable(path) + " has a name outside code page 932",
                    "Use a path that is in plain or Japanese letters throughout.");
    }
    return DefinitionCheck::Path(*name);
}

std::string shown(const CheckFinding& finding, bool colour) {
    std::string place = utf8(finding.path) + ":";
    if (finding.line > 0) place += std::to_string(finding.line) + ":" + std::to_string(finding.column) + ":";
    place = painted(place, bold, colour);
    if (finding.note) place += " " + painted("note:", amber, colour);
    return place + " " + utf8(finding.message) + "\n";
}

Json json_of(const CheckFinding& finding) {
    return {{"file", utf8(finding.path)},
            {"line", finding.line},
            {"column", finding.column},
            {"note", finding.note},
            {"message", utf8(finding.message)}};
}

std::string counted(std::size_t count, const std::string& thing) {
    return (count == 0 ? "no" : std::to_string(count)) + " " + thing + (count == 1 ? "" : "s");
}

}  // namespace

ExitCode run_check(const Command& command, const Arguments& arguments, Streams& streams) {
    std::vector<std::string> paths;
    bool with_notes = false;
    std::string output;
    ResultFormat format{};
    CommandLine line(command, "cephtool check", "cephtool check --notes --format json");
    line.add_argument(
        "PATH", paths,
        "an analysis folder, or files and folders\nin it; without any, the folder that\nships with the program");
    line.add_flag("--notes", with_notes, "show also what can be meant so");
    line.add_format(format, output, {ResultFormat::text, ResultFormat::json});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_output(output, paths);
    if (paths.empty()) paths.push_back(shipped_analyses());

    CheckResult all;
    for (const std::string& path : paths) {
        CheckResult result = checked(path);
        all.files += result.files;
        std::ranges::move(result.findings, std::back_inserter(all.findings));
    }
    const auto faults = static_cast<std::size_t>(std::ranges::count(all.findings, false, &CheckFinding::note));
    const std::size_t notes = all.findings.size() - faults;
    if (!with_notes) std::erase_if(all.findings, [](const CheckFinding& finding) { return finding.note; });
    std::string text;
    if (format == ResultFormat::json) {
        Json list = Json::array();
        for (const CheckFinding& finding : all.findings) list.push_back(json_of(finding));
        text = Json({{"files", all.files}, {"findings", list}}).dump(2) + "\n";
    } else {
        for (const CheckFinding& finding : all.findings) text += shown(finding, output.empty() && streams.colour);
    }
    write_result(text, output, streams.out);
    streams.err << counted(faults, "fault") << " in " << counted(static_cast<std::size_t>(all.files), "file");
    if (notes > 0) streams.err << ", " << counted(notes, "note") << (with_notes ? "" : " (--notes shows them)");
    streams.err << "\n";
    return faults == 0 ? ExitCode::done : ExitCode::bad_input;
}

}  // namespace cephtool
