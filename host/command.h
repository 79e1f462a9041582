// The commands of the program: each a file and a row in the table, from which help and dispatch both come.
#pragma once

#include <functional>
#include <iosfwd>
#include <span>
#include <string>
#include <vector>

#include "base/error.h"

namespace cephtool {

class CommandLine;

// What a command reads and writes. Results go to `out`, all else to `err`.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool colour = false;    // `out` is a terminal that shows colours
    bool progress = false;  // `err` is a terminal on which a line may be written over
    // Where set, the command shows its command line to it and does nothing else.
    std::function<void(const CommandLine&)> describe = {};
};

using Arguments = std::vector<std::string>;

struct Command {
    const char* name;
    const char* help;   // one line
    const char* about;  // sentences
    ExitCode (*run)(const Command& command, const Arguments& arguments, Streams& streams);
};

std::span<const Command> commands();

ExitCode run_analyze(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_analyses(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_batch(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_stage(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_modes(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_trace(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_reliability(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_report(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_chart(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_convert(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_compose(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_check(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_digitise(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_film(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_exif(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_lineimage(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_age(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_era(const Command& command, const Arguments& arguments, Streams& streams);
ExitCode run_help(const Command& command, const Arguments& arguments, Streams& streams);

// The whole program but for the process round it: finds the command, runs it, reports errors.
ExitCode run_program(const Arguments& arguments, Streams& streams);

}  // namespace cephtool
