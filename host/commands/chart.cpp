// cephtool chart: the deviations from the norms as a picture.
#include "base/wording.h"
#include "host/commands/report_options.h"
#include "host/output.h"
#include "report/report_document.h"

namespace cephtool {

ExitCode run_chart(const Command& command, const Arguments& arguments, Streams& streams) {
    ReportOptions given;
    CommandLine line(command, "cephtool chart --analysis Steiner lateral-class2.json -o chart.svg",
                     "cephtool chart --analysis Ricketts lateral-openbite.json -o chart.png");
    add_report_options(line, given);
    line.add_text("-o,--output", "FILE", given.output, "FILE.png, FILE.svg or FILE.pdf").required();
    CaseOptionFlags case_options(line);
    case_options.add_images(x_rays_help);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_output(given.output, case_options.files());
    const auto format = file_format(given.output);
    if (!format) {
        throw Error(ExitCode::bad_command_line, in_quotes(given.output) + " does not end in .png, .svg or .pdf",
                    "The end of the name says what is written.");
    }
    const Selection selection(given.folder, given.analyses, streams, {FolderPart::analyses, FolderPart::bone_age});
    const std::vector<FilmResults> films = measured_films(given, case_options, selection, streams);
    write_result(chart_file(*format, films, given.texts()), given.output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
