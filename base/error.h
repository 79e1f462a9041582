// What was wrong with an input or with the command line, where, and the way out.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace cephtool {

// What the program returns to its caller.
enum class ExitCode { done = 0, bad_input = 1, bad_command_line = 2 };

class Error : public std::runtime_error {
 public:
    // `advice` says what to do about it; empty when there is nothing to say.
    Error(ExitCode exit_code, const std::string& message, std::string advice = {})
        : std::runtime_error(message), code(exit_code), way_out(std::move(advice)) {}

    ExitCode code;
    std::string file;     // empty when no file is at fault
    int line = 0;         // from 1; 0: the file as a whole
    int column = 0;       // from 1, in characters
    std::string excerpt;  // the faulty line, ready to be shown
    int caret = 0;        // terminal columns in front of the fault in `excerpt`
    std::string way_out;
};

// "FILE:LINE:COLUMN: message", the line with a caret under the fault, and the way out, each line ended.
std::string shown(const Error& error);

}  // namespace cephtool
