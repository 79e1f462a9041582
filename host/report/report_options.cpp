#include "host/report/report_options.h"

#include <algorithm>
#include <ostream>

#include "host/case/case_files.h"
#include "host/growth/growth_findings.h"
#include "host/output.h"
#include "host/report/style.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

// What a film says that can't be said of the patient of the first one; empty when nothing does.
std::string other_patient(const Case& first, const Case& other) {
    std::vector<std::string> differences;
    const auto compare = [&](const char* what, const std::string& before, const std::string& now) {
        if (!before.empty() && !now.empty() && before != now)
            differences.push_back(what + in_quotes(now) + " instead of " + in_quotes(before));
    };
    compare("name ", first.name, other.name);
    if (first.sex && other.sex) compare("sex ", name_of(*first.sex), name_of(*other.sex));
    if (first.birth && other.birth) compare("birth ", text_of(*first.birth), text_of(*other.birth));
    return joined(differences, ", ");
}

}  // namespace

void add_report_options(CommandLine& line, ReportOptions& options) {
    line.add_argument("CASE", options.input, "file with landmarks; - is standard input").required();
    line.add_texts("--compare", "CASE", options.others, "the same patient at another time; again\nfor a third");
    line.add_analyses(options.analyses);
    line.add_choice("--language", options.language, {"en", "ja"}, "en or ja: of the texts round the results");
    line.add_analysis_folder(options.folder);
}

std::vector<FilmResults> measured_films(const ReportOptions& options, const CaseOptions& case_options,
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
    for (const std::string& path : paths) {
        const Source source = checked_text(read_bytes(path, streams.in));
        Case record = read_case(source, case_options);
        if (!films.empty() && record.kind != films.front().record().kind) {
            throw source.error(std::string("this is a ") + name_of(record.kind) + " case, and the first one is " +
                                   name_of(films.front().record().kind),
                               "Compare cases of one kind.");
        }
        if (!films.empty()) {
            const Case& first = films.front().record();
            const std::string other = other_patient(first, record);
            if (!other.empty()) {
                record.notes.push_back("another patient than in " + printable(first.file) + "? It has " + other);
            }
        }
        for (const std::string& note : record.notes) streams.err << printable(path) << ": " << note << "\n";
        check_output(options.output, {image_file(record)});
        FilmResults film{measured(std::move(record), selection.chosen(), {}, false), {}, {}, {}};
        say_remarks(film.record(), streams);
        film.growth = growth_findings(film.record());
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
