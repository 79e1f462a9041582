// The options of one command: CLI11, with this program's errors, suggestions and examples.
#pragma once

#include <CLI/CLI.hpp>
#include <map>
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
    const CLI::App& options() const { return app_; }
    const Command& command() const { return command_; }

    // A text option that takes one of `choices`.
    void add_choice(const std::string& option, std::string& value, std::vector<std::string> choices,
                    const std::string& help);
    // The same, and may be given again for more.
    void add_choice(const std::string& option, std::vector<std::string>& values, std::vector<std::string> choices,
                    const std::string& help);
    // What an option takes that was added so; else nothing.
    std::vector<std::string> choices(const CLI::Option& option) const;

    // False when the options were only to be shown. Throws an Error for whatever is wrong.
    bool parse(const Arguments& arguments, Streams& streams);

 private:
    Error unknown_option(const std::string& word) const;

    void limit(CLI::Option* option, std::vector<std::string> choices);

    const Command& command_;
    CLI::App app_;
    std::map<const CLI::Option*, std::vector<std::string>> choices_;
};

// The command line of a command, for as long as `show` runs.
void describe(const Command& command, const std::function<void(const CommandLine&)>& show);

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
