// cephtool batch: measures any number of cases into one table.
#include <algorithm>
#include <ostream>
#include <thread>

#include "base/wording.h"
#include "host/batch/batch_progress.h"
#include "host/batch/batch_work.h"
#include "host/case_option_flags.h"
#include "host/command_line.h"
#include "host/error_option.h"
#include "host/interruption.h"
#include "host/selection.h"

namespace cephtool {
namespace {

constexpr int most_threads = 1024;

std::size_t thread_count(std::optional<int> asked) {
    return asked ? static_cast<std::size_t>(*asked) : std::max(1U, std::thread::hardware_concurrency());
}

}  // namespace

ExitCode run_batch(const Command& command, const Arguments& arguments, Streams& streams) {
    std::vector<std::string> paths, names, with;
    std::string folder, output;
    ResultFormat result_format{};
    std::optional<int> band, threads;
    ErrorOption error;
    bool resume = false;
    CommandLine line(command, "cephtool batch lateral-average.json lateral-class2.json -o new.csv",
                     "cephtool batch --analysis Steiner --with norms cases-flat.csv -o new.jsonl");
    line.add_argument("CASES", paths, "files or folders with cases; - is standard input").required();
    line.add_text("-o,--output", "FILE", output, "table to write: FILE.csv or FILE.jsonl").required();
    line.add_analyses(names);
    line.add_choice(
        "--with", with, {"norms", "deviations", "errors", "slips"},
        "norms (mean and SD), deviations or standard\nerrors, in columns of their own, or slips,\nlandmarks where nobody expects them, among\nthe remarks; again for more");
    add_error_file(line, error);
    line.add_format(result_format, output, {ResultFormat::csv, ResultFormat::json_lines});
    line.add_flag("--resume", resume, "go on with what a stopped run has written");
    line.add_number("--threads", threads, 1, most_threads, "as many at a time; else one a core");
    line.add_analysis_folder(folder);
    line.add_band(band);
    const CaseOptionFlags case_options(line);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_inputs(paths);
    if (output == "-") {
        throw Error(ExitCode::bad_command_line, "the table of a batch can't go to standard output",
                    "Name a file behind -o; --resume can then go on when the run is stopped.");
    }
    const Selection selection(folder, names, streams);

    const auto asked = [&](const char* what) { return std::ranges::find(with, what) != with.end(); };
    error.wanted = asked("errors") || !error.file.empty();
    const auto errors = landmark_errors(error, selection.folder(), streams.in);
    const std::string population = case_options.population();
    selection.check_population(population);
    // One population for all cases names the columns by its own sheets.
    std::vector<AnalysisFamily> analyses(selection.chosen().begin(), selection.chosen().end());
    if (!population.empty())
        for (AnalysisFamily& family : analyses) family = family.of(population);
    const BatchColumns columns = batch_columns(analyses, {asked("norms"), asked("deviations"), error.wanted});
    const BatchFormat format(result_format, columns);
    BatchOutput table(output, format.head(), format.number_mark());
    table.check(paths);
    table.check(names);
    table.check(case_options.files());
    const Interruption interruption;
    if (!table.lock()) {
        streams.err << "note: the file system of " << printable(output)
                    << " has no locks: a second run beside this one would not be noticed\n";
    }
    if (resume && !table.has_part() && table.has_result()) {
        streams.err << printable(output) << " is complete already\n";
        return ExitCode::done;
    }
    if (!resume && table.has_part()) {
        throw Error(ExitCode::bad_command_line, printable(table.part()) + " is there, from a run that was stopped",
                    "Go on with --resume, or delete it to begin anew.");
    }
    CaseStream stream(paths, streams.in, [&](const std::string& file) { return table.is_own(file); });
    if (resume && table.has_part()) {
        table.resume();
    } else {
        table.begin();
    }
    BatchProgress progress(streams.err, streams.progress);
    const auto show = [&](std::size_t cases) {
        for (const std::string& note : stream.take_notes()) {
            progress.clear();
            streams.err << "note: " << note << "\n";
        }
        const auto all = stream.bytes_in_all();
        const bool known = all && *all > 0;
        progress.add(cases, known ? std::optional(static_cast<double>(stream.bytes_read()) / static_cast<double>(*all))
                                  : std::nullopt);
    };
    const BatchWork work{columns,
                         format,
                         case_options.options(),
                         band,
                         errors ? &*errors : nullptr,
                         asked("slips"),
                         thread_count(threads)};
    if (!measure_batch(work, stream, table, interruption_asked, show)) {
        throw Error(ExitCode::bad_input, "stopped; " + printable(table.part()) + " holds the cases that are done",
                    "The same command line with --resume goes on.");
    }
    table.finish();
    progress.clear();
    if (table.failures() == 0) return ExitCode::done;
    streams.err << table.failures() << (table.failures() == 1 ? " case" : " cases") << " failed: see "
                << printable(table.failures_path()) << "\n";
    return ExitCode::bad_input;
}

}  // namespace cephtool
