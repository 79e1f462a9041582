// The options of one command: CLI11, with this program's errors, suggestions and examples. Only who looks into the
// command line itself, as manual pages and completion do, includes CLI11.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/command.h"
#include "host/result_format.h"
#include "results/texts.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace cephtool {

// What is wrong with a value; "" for nothing.
using Fault = std::function<std::string(const std::string& value)>;

// What was added to a command line, for as long as that lives.
class Option {
 public:
    explicit Option(CLI::Option* option) : option_(option) {}
    Option required();
    Option excludes(Option other);

 private:
    CLI::Option* option_;
};

// Names are "--scale" or "-o,--output". `sort` is the word that stands for the value in the help; completion goes by
// it.
class CommandLine {
 public:
    // Two examples of whole command lines end the help.
    CommandLine(const Command& command, const std::string& first_example, const std::string& second_example);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    const CLI::App& app() const { return *app_; }
    const Command& command() const { return command_; }

    // A word without a name in front; the last such may be a list.
    Option add_argument(const std::string& sort, std::string& value, const std::string& help);
    Option add_argument(const std::string& sort, std::vector<std::string>& values, const std::string& help);

    Option add_flag(const std::string& names, bool& value, const std::string& help);
    Option add_text(const std::string& names, const std::string& sort, std::string& value, const std::string& help,
                    Fault fault = {});
    // It may be given again for more.
    Option add_texts(const std::string& names, const std::string& sort, std::vector<std::string>& values,
                     const std::string& help);
    // Any number of words behind one name, up to the next option.
    Option add_list(const std::string& names, const std::string& sort, std::vector<std::string>& values,
                    const std::string& help);
    // The same, and when it is given again another list.
    Option add_lists(const std::string& names, const std::string& sort, std::vector<std::vector<std::string>>& values,
                     const std::string& help);
    // Two words behind one name.
    Option add_pair(const std::string& names, const std::string& sorts, std::vector<std::string>& values,
                    const std::string& help);
    Option add_number(const std::string& names, std::optional<int>& value, int least, int most,
                      const std::string& help);

    // A text that is one of `choices`.
    void add_choice(const std::string& names, std::string& value, std::vector<std::string> choices,
                    const std::string& help);
    // The same, and may be given again for more.
    void add_choice(const std::string& names, std::vector<std::string>& values, std::vector<std::string> choices,
                    const std::string& help);
    // What an option takes that was added so; else nothing.
    std::vector<std::string> choices(const CLI::Option& option) const;

    // Options that several commands have.
    void add_analyses(std::vector<std::string>& names);
    void add_analysis_folder(std::string& folder);
    void add_band(std::optional<int>& band);
    void add_population(std::string& name);
    void add_language(Language& language, const std::string& help);
    // "-o": where the result goes, "" for standard output.
    void add_output(std::string& path);
    // "--format". Where it is not given the end of the name `output` says which of `formats` is meant, else it is the
    // first; parse() throws an Error for the end of a format that is none of them.
    void add_format(ResultFormat& format, const std::string& output, std::vector<ResultFormat> formats);

    // False when the options were only to be shown. Throws an Error for whatever is wrong.
    bool parse(const Arguments& arguments, Streams& streams);

 private:
    Error unknown_option(const std::string& word) const;
    ResultFormat format_of_name(const std::string& output, const std::vector<ResultFormat>& formats) const;
    void limit(CLI::Option* option, std::vector<std::string> choices);

    const Command& command_;
    std::unique_ptr<CLI::App> app_;
    std::map<const CLI::Option*, std::vector<std::string>> choices_;
    std::vector<std::function<void()>> when_parsed_;
};

// The command line of a command, for as long as `show` runs.
void describe(const Command& command, const std::function<void(const CommandLine&)>& show);

// Throws an Error when standard input is named more than once.
void check_inputs(const std::vector<std::string>& paths);

}  // namespace cephtool
