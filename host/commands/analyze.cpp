// cephtool analyze: measures cases.
#include <ostream>

#include "base/path.h"
#include "base/wording.h"
#include "host/case_files.h"
#include "host/case_option_flags.h"
#include "host/command_line.h"
#include "host/error_option.h"
#include "host/landmark_slips.h"
#include "host/output.h"
#include "host/selection.h"
#include "results/results.h"

namespace cephtool {
namespace {

constexpr ResultForms<CaseResult, Texts> forms{results_table, results_json, results_csv};

}  // namespace

ExitCode run_analyze(const Command& command, const Arguments& arguments, Streams& streams) {
    std::vector<std::string> paths, names;
    std::string folder, output;
    ResultFormat format{};
    std::optional<int> band;
    ErrorOption error;
    Language language = Language::english;
    CommandLine line(command, "cephtool analyze lateral-average.json",
                     "cephtool analyze --format csv --sex f lateral-average.csv lateral-class2.json");
    line.add_argument("CASE", paths, "files with landmarks; - is standard input").required();
    line.add_analyses(names);
    line.add_analysis_folder(folder);
    line.add_band(band);
    add_error_options(line, error);
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
    check_output(output, names);
    const Selection selection(folder, names, streams);
    if (selection.chosen().empty()) {
        throw Error(ExitCode::bad_command_line,
                    "no analyses in " + printable(utf8_from_path(selection.folder().path())),
                    "A folder of analyses holds \"CalcForm\" with a \"list.txt\". Name one with --anaitem FOLDER.");
    }

    const auto errors = landmark_errors(error, selection.folder(), streams.in);
    selection.check_population(case_options.population());

    const Texts texts(language);
    std::vector<CaseResult> results;
    LandmarkSlips slips(streams);
    const auto measure = [&](const Source& source, Case record) {
        slips.remark(record);
        CaseResult result =
            measured(std::move(record), selection.chosen(), band, names.empty(), errors ? &*errors : nullptr);
        if (!names.empty() && result.analyses.empty()) {
            throw source.error(std::string("this is a ") + name_of(result.record.kind) +
                                   " case, and none of the analyses named is for its kind",
                               "\"cephtool analyses\" lists the analyses by kind.");
        }
        if (format != ResultFormat::table || !output.empty()) say_remarks(result.record, streams);
        if (format == ResultFormat::csv) {
            for (const LeftOut& left : result.left_out)
                streams.err << printable(result.record.file) << ": " << left.in_words(texts) << "\n";
        }
        results.push_back(std::move(result));
    };
    const ExitCode code = for_each_case(paths, case_options, streams, measure);
    for (const auto& result : results) check_output(output, {image_file(result.record)});
    const bool to_terminal = output.empty() && streams.colour;
    if (!results.empty()) write_result(forms.of(results, format, to_terminal, texts), output, streams.out);
    return code;
}

}  // namespace cephtool
