// cephtool reliability: how well readings of the same films agree.
#include <algorithm>
#include <filesystem>
#include <ostream>

#include "base/path.h"
#include "base/suggestion.h"
#include "base/wording.h"
#include "host/case_option_flags.h"
#include "host/command_line.h"
#include "host/output.h"
#include "host/selection.h"
#include "report/study_document.h"
#include "study/films.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

// Files, and those of folders in the order of their names.
std::vector<std::string> files_of(const std::vector<std::string>& paths) {
    std::vector<std::string> files;
    for (const std::string& path : paths) {
        std::error_code failure;
        if (path == "-" || !fs::is_directory(path_from_utf8(path), failure)) {
            files.push_back(path);
            continue;
        }
        std::vector<std::string> inside;
        for (const fs::directory_entry& entry : fs::directory_iterator(path_from_utf8(path), failure))
            if (entry.is_regular_file(failure) && !utf8_from_path(entry.path().filename()).starts_with("."))
                inside.push_back(utf8_from_path(entry.path()));
        if (failure) {
            throw Error(ExitCode::bad_input, printable(path) + " can't be read: " + failure.message(),
                        "Name the files of the cases.");
        }
        std::ranges::sort(inside);
        files.insert(files.end(), inside.begin(), inside.end());
    }
    return files;
}

StudyReading read_all(const std::vector<std::string>& paths, const CaseOptionFlags& options, Streams& streams) {
    StudyReading reading;
    for (const std::string& path : files_of(paths))
        reading.add_file(path, read_cases(read_bytes(path, streams.in), options.options()));
    return reading;
}

// Those of the names, all without any: "SNA" in whichever analyses have it, "Steiner:SNA" in one.
std::vector<const StudyItem*> items_named(const Study& study, const std::vector<std::string>& names) {
    std::vector<const StudyItem*> items;
    if (names.empty())
        for (const StudyItem& item : study.items) items.push_back(&item);
    for (const std::string& name : names) {
        const std::size_t before = items.size();
        std::vector<std::string> known;
        for (const StudyItem& item : study.items) {
            const std::string full = short_name(*item.of) + ":" + item.name;
            known.insert(known.end(), {item.name, full});
            if (lower_case(name) == lower_case(item.name) || lower_case(name) == lower_case(full))
                items.push_back(&item);
        }
        if (items.size() > before) continue;
        const std::string meant = did_you_mean(name, known);
        throw Error(ExitCode::bad_command_line, "the study has no item " + in_quotes(name),
                    meant.empty() ? "The table without -o lists its items; --analysis chooses analyses." : meant);
    }
    return items;
}

}  // namespace

ExitCode run_reliability(const Command& command, const Arguments& arguments, Streams& streams) {
    std::vector<std::vector<std::string>> paths(2), more;
    std::vector<std::string> names;
    std::optional<int> repeats;
    std::string folder, output, errors_path;
    std::vector<std::string> plotted;
    Language language = Language::english;
    ResultFormat format{};
    CommandLine line(command, "cephtool reliability readings-first.tps --second readings-second.tps",
                     "cephtool reliability readings-first.tps --second readings-second.tps -o s.pdf");
    line.add_argument("FIRST", paths[0], "cases of the first reading: files or folders").required();
    line.add_list("--second", "CASE", paths[1], "the same films read again: the names of\nthe files are the same")
        .required();
    line.add_lists("--next", "CASE", more, "and once more; it may be given again");
    line.add_number("--repeats", repeats, 1, 100,
                    "readings of each observer, which follow\neach other: tells observers apart from\nrepetition");
    line.add_text("--write-errors", "FILE", errors_path,
                  "writes the errors of the landmarks, as\nLandmarkError.txt holds them");
    line.add_analyses(names);
    line.add_analysis_folder(folder);
    const CaseOptionFlags case_options(line);
    line.add_texts("--item", "ITEM", plotted,
                   "an item to plot on the pages, \"SNA\" or\n\"Steiner:SNA\"; again for more. None: all");
    line.add_language(language, "en or ja: of the pages");
    line.add_format(format, output,
                    {ResultFormat::table, ResultFormat::json, ResultFormat::csv, ResultFormat::pdf, ResultFormat::svg,
                     ResultFormat::html});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    paths.insert(paths.end(), more.begin(), more.end());
    const std::size_t repeated = static_cast<std::size_t>(repeats.value_or(1));
    if (paths.size() % repeated != 0) {
        throw Error(
            ExitCode::bad_command_line,
            std::to_string(paths.size()) + " readings are not " + std::to_string(repeated) + " of each observer",
            "Name the readings of the first observer, then those of the second and so on.");
    }
    std::vector<std::string> inputs;
    for (const auto& each : paths) inputs.insert(inputs.end(), each.begin(), each.end());
    check_inputs(inputs);
    for (const std::string& written : {output, errors_path}) check_output(written, inputs);
    const Selection selection(folder, names, streams);
    std::vector<StudyReading> readings;
    for (const auto& each : paths) readings.push_back(read_all(each, case_options, streams));
    std::size_t left_out = 0;
    const std::vector<StudyFilm> films = films_of(std::move(readings), left_out);
    if (left_out > 0)
        streams.err << "note: " << left_out << (left_out == 1 ? " film is" : " films are")
                    << " left out, which not all readings have\n";
    std::vector<const Analysis*> analyses;
    for (const AnalysisFamily& family : selection.chosen()) analyses.push_back(family.of(case_options.population()));
    const Study study = studied(films, analyses, repeated);
    if (!errors_path.empty()) {
        const std::string source =
            std::to_string(study.films) + " films, " + std::to_string(study.readings) + " readings";
        const auto text =
            errors_of(study, source)
                .to_text(
                    "Technical errors of a single reading in mm, along and across Frankfort,\nby \"cephtool reliability\".");
        if (!text) throw Error(ExitCode::bad_input, "a landmark has a name outside code page 932", "Rename it.");
        write_result(*text, errors_path, streams.out);
    }
    const std::vector<const StudyItem*> items = items_named(study, plotted);
    const Texts texts(language);
    const std::string text = format == ResultFormat::csv    ? study_csv(study)
                             : format == ResultFormat::json ? study_json(study)
                             : format == ResultFormat::pdf  ? study_file(StudyFile::pdf, study, items, texts)
                             : format == ResultFormat::svg  ? study_file(StudyFile::svg, study, items, texts)
                             : format == ResultFormat::html ? study_file(StudyFile::html, study, items, texts)
                                                            : study_table(study);
    write_result(text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
