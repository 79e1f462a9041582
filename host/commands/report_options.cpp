#include "host/commands/report_options.h"

#include <algorithm>
#include <ostream>

#include "base/wording.h"
#include "host/case_files.h"
#include "host/landmark_slips.h"
#include "host/output.h"
#include "report/style.h"
#include "results/growth_findings.h"

namespace cephtool {
namespace {

// What a film says that can't be said of the patient of the first one.
std::vector<Remark> other_patient(const Case& first, const Case& other) {
    std::vector<Remark> remarks;
    const std::string file = printable(first.file);
    if (!first.name.empty() && !other.name.empty() && first.name != other.name) {
        remarks.push_back({"other_patient",
                           "Another patient? The name is %1, in %2 it is %3.",
                           {in_quotes(other.name), file, in_quotes(first.name)}});
    }
    if (first.sex && other.sex && first.sex != other.sex) {
        remarks.push_back({"other_patient", "Another patient? The sex is not that of %1.", {file}});
    }
    if (first.birth && other.birth && first.birth != other.birth) {
        remarks.push_back({"other_patient",
                           "Another patient? Born on %1, in %2 on %3.",
                           {text_of(*other.birth), file, text_of(*first.birth)}});
    }
    return remarks;
}

}  // namespace

void add_report_options(CommandLine& line, ReportOptions& options) {
    line.add_argument("CASE", options.input, "file with landmarks; - is standard input").required();
    line.add_texts("--compare", "CASE", options.others, "the same patient at another time; again\nfor a third");
    line.add_analyses(options.analyses);
    add_error_options(line, options.error);
    line.add_language(options.language, "en or ja: of names and texts");
    line.add_analysis_folder(options.folder);
}

std::vector<FilmResults> measured_films(const ReportOptions& options, const CaseOptionFlags& case_options,
                                        const Selection& selection, Streams& streams) {
    std::vector<std::string> paths{options.input};
    paths.insert(paths.end(), options.others.begin(), options.others.end());
    check_inputs(paths);
    check_output(options.output, paths);
    check_output(options.output, options.analyses);
    if (paths.size() > most_times) {
        throw Error(ExitCode::bad_command_line, "more than " + std::to_string(most_times) + " cases can't be compared",
                    "Name at most two with --compare.");
    }
    std::vector<FilmResults> films;
    LandmarkSlips slips(streams);
    selection.check_population(case_options.population());
    case_options.check_images(paths.size());
    const auto errors = landmark_errors(options.error, selection.folder(), streams.in);
    for (const std::string& path : paths) {
        const Source source = checked_text(read_bytes(path, streams.in));
        Case record = read_case(source, case_options.options(films.size()));
        slips.remark(record);
        if (!films.empty() && record.kind != films.front().record().kind) {
            throw source.error(std::string("this is a ") + name_of(record.kind) + " case, and the first one is " +
                                   name_of(films.front().record().kind),
                               "Compare cases of one kind.");
        }
        if (!films.empty()) {
            for (Remark& remark : other_patient(films.front().record(), record))
                record.remarks.push_back(std::move(remark));
        }
        if (!films.empty()) record.population = films.front().record().population;  // norms are those of one analysis
        for (const std::string& note : record.notes) streams.err << printable(path) << ": " << note << "\n";
        check_output(options.output, {image_file(record)});
        FilmResults film{
            measured(std::move(record), selection.chosen(), {}, false, errors ? &*errors : nullptr), {}, {}, {}};
        say_remarks(film.record(), streams);
        film.growth = growth_findings(film.record(), selection.folder());
        if (!options.analyses.empty() && film.result.analyses.empty()) {
            throw source.error(std::string("this is a ") + name_of(film.record().kind) +
                                   " case, and none of the analyses named is for its kind",
                               "\"cephtool analyses\" lists the analyses by kind.");
        }
        films.push_back(std::move(film));
    }
    if (std::ranges::all_of(films, [](const FilmResults& film) { return film.record().film.has_value(); })) {
        std::ranges::stable_sort(films, {}, [](const FilmResults& film) { return *film.record().film; });
    }
    return films;
}

}  // namespace cephtool
