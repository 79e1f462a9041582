#include <UnreadFile.h>

#include <iostream>
#include <new>

#include "base/columns.h"
#include "base/suggestion.h"
#include "base/wording.h"
#include "host/command.h"
#include "host/completion.h"
#include "host/output.h"

namespace cephtool {
namespace {

constexpr Command command_table[] = {
    {"analyze", "measure cases and compare them with the norms",
     "Shows each item of the analyses that fit a case: its value, the norm for the patient's sex and stage, and how many "
     "standard deviations lie between them, with a star for each whole one. Without --analysis a case is measured with "
     "every analysis of its kind that its landmarks allow.",
     run_analyze},
    {"analyses", "list the analyses, or the items and norms of one",
     "Without NAME each analysis is named with its kind and file. With it each item is shown with its formula, unit and "
     "norm; where norms differ by age or stage, those of the first one.",
     run_analyses},
    {"batch", "measure any number of cases into one table",
     "Each case becomes a row, in the order of the input, whatever file, folder, flat table or stream it comes from. A "
     "bad case stops nothing: it is told in a table of its own, beside the other. Ctrl-C lets what was begun be "
     "finished; --resume goes on later.",
     run_batch},
    {"stage", "tell dental stage, growth stages and bone age",
     "Shows for each case its age, Hellman's dental stage, the Ricketts stage, the bone age by the cervical vertebrae, "
     "and the stage whose norms each analysis takes, and says from what each was found.",
     run_stage},
    {"modes", "list the display modes, or show one",
     "A display mode says which landmarks, lines and values a tracing shows. With MODE all of these are listed.",
     run_modes},
    {"trace", "draw the tracing of a case as PNG, SVG or PDF",
     "Draws landmarks, outlines, planes and values as a display mode has them, on white, dark, or over the X-ray. A case "
     "without outlines of its own gets those of an average face, fitted to its landmarks.",
     run_trace},
    {"report", "make a report to print, with tracing, tables and charts",
     "Pages in PDF or HTML: the patient, the tracing, and each analysis with a chart of its deviations. With --compare "
     "they show two or three films, laid over each other as well.",
     run_report},
    {"chart", "draw the deviations from the norms as PNG, SVG or PDF",
     "Each item is a row, and a mark in it shows how many standard deviations the value lies from the mean. The bands "
     "end at 1, 2 and 3.",
     run_chart},
    {"convert", "write a case in another format",
     "Reads and writes JSON, CSV, TPS, markups of 3D Slicer (.mrk.json, .fcsv) and the texts of the cephalometric "
     "challenges. What the other format has no place for is told.",
     run_convert},
    {"compose", "make an analysis of items of several analyses",
     "Writes a definition file that gives each item the value, norm and deviation that its own analysis gives, with the "
     "items that it refers to. Measure with it by --analysis FILE, or list it in a folder of your own.",
     run_compose},
    {"check", "find faults in the files of an analysis folder",
     "Names what an analysis would pass over in silence: misspelt keys, missing items, brackets never closed, norms that "
     "don't match. The exit code is 1 when there is a fault.",
     run_check},
    {"digitise", "place landmarks on a film, in the browser",
     "Opens the page in which a film is calibrated and its landmarks are placed, with values and tracing beside it; "
     "where there is no browser its path is printed. Nothing leaves the computer.",
     run_digitise},
#ifdef TOOL_STUDY
    {"reliability", "tell how well readings of the same films agree",
     "Each reading is a file or folder of cases, of the same films with the same scale: by one person at another time, or "
     "by others. Tells for each landmark and value the technical error (of two readings Dahlberg's), the intraclass "
     "correlations, bias, and limits of agreement; and writes the errors of landmarks for \"analyze --error\".",
     run_reliability},
#endif
    {"film", "tell what the files of X-rays are; write one as PNG",
     "Shows format, size, depth, the width of a pixel and where that comes from, the patient, dates, and what is doubtful. "
     "The PNG holds the picture alone, through the window of the file or one of your own.",
     run_film},
    {"exif", "tell what the headers of photographs say",
     "Shows camera, date, exposure, lens, place and size as the camera has written them into a JPEG file.", run_exif},
    {"lineimage", "make traced lines a line image; widen, narrow, thin them",
     "Takes the lines out of a picture by their darkness, then widens, narrows and thins them, always in this order.",
     run_lineimage},
    {"age", "tell an age in years and months",
     "Dates are of either calendar, the Japanese one by its eras. Two rules are in use that now and then differ by a "
     "month; both are shown.",
     run_age},
    {"era", "convert dates to Japanese eras and back", "Dates of either calendar can be mixed.", run_era},
    {"help", "show this text, or the help of a command", "", run_help},
};

const Command& find_command(const std::string& name) {
    std::vector<std::string> names;
    for (const Command& command : commands()) {
        if (name == command.name) return command;
        names.emplace_back(command.name);
    }
    const std::string meant = did_you_mean(name, names);
    throw Error(ExitCode::bad_command_line, "there is no command " + in_quotes(name),
                meant.empty() ? "\"cephtool help\" lists them." : meant);
}

std::string overview() {
    std::string text =
        "Measures cephalometric landmarks and compares them with norms.\n\n"
        "Usage: cephtool COMMAND ...\n\nCommands:\n";
    for (const Command& command : commands()) text += "  " + left_aligned(command.name, 12) + command.help + "\n";
    return text +
           "\n\"cephtool help COMMAND\" tells more; \"cephtool --version\" prints the version.\n"
           "Exit codes: 0 done, 1 an input was bad, 2 the command line was bad.\n";
}

ExitCode dispatch(const Arguments& arguments, Streams& streams) {
    if (arguments.empty()) {
        streams.err << overview();
        return ExitCode::bad_command_line;
    }
    if (arguments[0] == "complete") {  // for the shells' scripts, so no command of the table
        complete({arguments.begin() + 1, arguments.end()}, streams.out);
        return ExitCode::done;
    }
    if (arguments[0] == "--version") {
        streams.out << "cephtool " CEPHTOOL_VERSION "\n";
        return ExitCode::done;
    }
    const std::string& name = arguments[0] == "--help" || arguments[0] == "-h" ? "help" : arguments[0];
    const Command& command = find_command(name);
    return command.run(command, {arguments.begin() + 1, arguments.end()}, streams);
}

}  // namespace

std::span<const Command> commands() {
    return command_table;
}

ExitCode run_help(const Command&, const Arguments& arguments, Streams& streams) {
    if (arguments.empty() || arguments[0] == "help") {
        streams.out << overview();
        return ExitCode::done;
    }
    const Command& command = find_command(arguments[0]);
    return command.run(command, {"--help"}, streams);
}

ExitCode run_program(const Arguments& arguments, Streams& streams) {
    const auto guarded = [&](const std::function<ExitCode()>& work) {
        try {
            return work();
        } catch (const Error& error) {
            streams.err << shown(error);
            return error.code;
        } catch (const std::bad_alloc&) {
            streams.err << "cephtool: there is not enough memory\n";
            return ExitCode::bad_input;
        } catch (const std::exception& failure) {
            streams.err << "cephtool: " << failure.what() << "\n";
            return ExitCode::bad_input;
        }
    };
    UnreadFile();  // forgets what an earlier run met
    const ExitCode code = guarded([&] { return dispatch(arguments, streams); });
    const ExitCode all_read = guarded([] { return check_all_read(), ExitCode::done; });
    return code == ExitCode::done ? all_read : code;
}

}  // namespace cephtool
