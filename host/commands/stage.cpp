// cephtool stage: how far patients have grown.
#include <ostream>

#include "host/case_files.h"
#include "host/case_option_flags.h"
#include "host/command_line.h"
#include "host/output.h"
#include "host/selection.h"
#include "results/growth.h"
#include "results/growth_findings.h"
#include "results/growth_report.h"

namespace cephtool {
namespace {

GrowthResult growth_of(Case record, const Selection& selection) {
    GrowthResult result{{}, growth_findings(record, selection.folder()), {}};
    for (const AnalysisFamily& family : selection.chosen()) {
        const Analysis* const analysis = family.of(record.population);
        if (case_kind(*analysis) != record.kind) continue;
        for (const StageSet set : {StageSet::first, StageSet::second}) {
            Finding finding = stage_finding(*analysis, set, record);
            const bool says_something = finding.stage || !finding.missing.empty();
            if (says_something) result.stages.push_back(std::move(finding));
        }
    }
    result.record = std::move(record);
    return result;
}

constexpr ResultForms<GrowthResult, Texts> forms{growth_table, growth_json, growth_csv};

}  // namespace

ExitCode run_stage(const Command& command, const Arguments& arguments, Streams& streams) {
    std::vector<std::string> paths;
    std::string folder, output;
    ResultFormat format{};
    Language language = Language::english;
    CommandLine line(command, "cephtool stage lateral-class2.json",
                     "cephtool stage --format csv lateral-average.json lateral-class2.json");
    line.add_argument("CASE", paths, "files with landmarks; - is standard input").required();
    line.add_analysis_folder(folder);
    line.add_language(language, "en or ja: of names and texts");
    CaseOptionFlags case_options(line);
    case_options.add_images(
        "the X-ray of the case (JPEG, PNG, TIFF,\nDICOM), asked for what it lacks; again for\nthe next case");
    line.add_format(format, output, {ResultFormat::table, ResultFormat::json, ResultFormat::csv});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_inputs(paths);
    check_output(output, paths);
    check_output(output, case_options.files());
    const Selection selection(folder, {}, streams, {FolderPart::analyses, FolderPart::bone_age});
    selection.check_population(case_options.population());

    std::vector<GrowthResult> results;
    const ExitCode code = for_each_case(paths, case_options, streams, [&](const Source&, Case record) {
        if (format != ResultFormat::table || !output.empty()) say_remarks(record, streams);
        results.push_back(growth_of(std::move(record), selection));
    });
    for (const auto& result : results) check_output(output, {image_file(result.record)});
    const bool to_terminal = output.empty() && streams.colour;
    if (!results.empty()) write_result(forms.of(results, format, to_terminal, Texts(language)), output, streams.out);
    return code;
}

}  // namespace cephtool
