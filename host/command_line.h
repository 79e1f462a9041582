// The options of one command: CLI11, with this program's errors, suggestions and examples.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/case.h"
#include "host/command.h"

namespace cephtool {

class CommandLine {
 public:
    // Two examples of whole command lines end the help.
    CommandLine(const Command& command, const std::string& first_example, const std::string& second_example);

    CLI::App& options() { return app_; }
    // A text option that takes one of `choices`.
    void add_choice(const std::string& option, std::string& value, std::vector<std::string> choices,
                    const std::string& help);

    // False when help was asked for and printed. Throws an Error for whatever is wrong.
    bool parse(const Arguments& arguments, Streams& streams);

 private:
    Error unknown_option(const std::string& word) const;

    std::string name_;
    CLI::App app_;
};

// "--sex", "--scale" and the like, which say what a case itself lacks.
class CaseOptionFlags {
 public:
    explicit CaseOptionFlags(CommandLine& line);
    // Throws an Error when a file that an option names can't be read.
    CaseOptions options() const;

 private:
    std::string sex_, scale_, landmarks_, image_height_;
    bool mirror_ = false;
};

// Throws an Error when standard input is named more than once.
void check_inputs(const std::vector<std::string>& paths);

}  // namespace cephtool
