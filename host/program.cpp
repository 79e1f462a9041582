#include <iostream>

#include "host/command.h"
#include "host/suggestion.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

constexpr Command command_table[] = {
    {"analyze", "measure cases and compare them with the norms", run_analyze},
    {"analyses", "list the analyses, or the items and norms of one", run_analyses},
    {"batch", "measure any number of cases into one table", run_batch},
    {"stage", "tell dental stage, growth stages and bone age", run_stage},
    {"modes", "list the display modes, or show one", run_modes},
    {"trace", "draw the tracing of a case as PNG, SVG or PDF", run_trace},
    {"report", "make a report to print, with tracing, tables and charts", run_report},
    {"chart", "draw the deviations from the norms as PNG, SVG or PDF", run_chart},
    {"convert", "write a case in another format", run_convert},
    {"check", "find faults in the files of an analysis folder", run_check},
    {"exif", "tell what the headers of photographs say", run_exif},
    {"lineimage", "make traced lines a line image; widen, narrow, thin them", run_lineimage},
    {"age", "tell an age in years and months", run_age},
    {"era", "convert dates to Japanese eras and back", run_era},
    {"help", "show this text, or the help of a command", run_help},
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
    try {
        return dispatch(arguments, streams);
    } catch (const Error& error) {
        streams.err << shown(error);
        return error.code;
    } catch (const std::exception& failure) {
        streams.err << "cephtool: " << failure.what() << "\n";
        return ExitCode::bad_input;
    }
}

}  // namespace cephtool
