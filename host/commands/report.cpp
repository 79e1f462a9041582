// cephtool report: a report to print.
#include <ostream>

#include "base/wording.h"
#include "host/commands/report_options.h"
#include "host/output.h"
#include "host/result_format.h"
#include "report/report_document.h"

namespace cephtool {
ExitCode run_report(const Command& command, const Arguments& arguments, Streams& streams) {
    ReportOptions given;
    std::string mode_name;
    bool no_image = false;
    CommandLine line(command, "cephtool report lateral-class2.json -o report.pdf",
                     "cephtool report --language ja lateral-openbite.json -o report.html");
    add_report_options(line, given);
    line.add_text("-o,--output", "FILE", given.output, "FILE.pdf or FILE.html").required();
    line.add_text("--mode", "MODE", mode_name, "display mode of the tracing, see\n\"cephtool modes\"");
    CaseOptionFlags case_options(line);
    const Option images = case_options.add_images(x_rays_help);
    line.add_flag("--no-image", no_image, "not over the X-rays that the cases name").excludes(images);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_output(given.output, case_options.files());
    const auto end = end_of(given.output);
    const auto format = end ? end->format : std::nullopt;
    if (format != ResultFormat::pdf && format != ResultFormat::html) {
        throw Error(ExitCode::bad_command_line, in_quotes(given.output) + " ends neither in .pdf nor in .html",
                    "A report has pages; \"cephtool chart\" and \"cephtool trace\" write pictures.");
    }
#ifndef TOOL_SURFACE_PICTURES
    if (format == ResultFormat::pdf)
        throw Error(ExitCode::bad_command_line, "this program was built without Cairo and Pango, and writes no PDF",
                    "Name a file that ends in .html, which a browser prints.");
#endif
    const Selection selection(given.folder, given.analyses, streams,
                              {FolderPart::analyses, FolderPart::modes, FolderPart::bone_age});
    std::vector<FilmResults> films = measured_films(given, case_options, selection, streams);
    const Kind kind = films.front().record().kind;
    const DisplayMode mode = chosen_mode(selection.folder(), kind, mode_name);
    const OutlineTemplate face = shipped_template(kind);
    for (FilmResults& film : films) {
        if (!no_image) film.film = named_film(film.record());
        film.tracing = tracing_of(film.record(), mode, selection.listed(), face, OutlineSource::own_or_fitted);
        std::vector<std::string> notes = film.film ? film.film->doubts : std::vector<std::string>();
        notes.insert(notes.end(), film.tracing.notes.begin(), film.tracing.notes.end());
        for (const std::string& note : notes) streams.err << printable(film.record().file) << ": " << note << "\n";
    }
    const Texts texts = given.texts();
    write_result(format == ResultFormat::pdf ? report_pdf(films, texts) : report_html(films, texts), given.output,
                 streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
