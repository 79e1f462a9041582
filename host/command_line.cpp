#include "host/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <ostream>
#include <sstream>

#include "base/columns.h"
#include "base/numbers.h"
#include "base/suggestion.h"
#include "base/wording.h"
#include "host/output.h"

namespace cephtool {
namespace {

std::vector<std::string> names_of(const std::vector<ResultFormat>& formats) {
    std::vector<std::string> names;
    for (const ResultFormat format : formats) names.emplace_back(name_of(format));
    return names;
}

}  // namespace

Option Option::required() {
    option_->required();
    return *this;
}

Option Option::excludes(Option other) {
    option_->excludes(other.option_);
    return *this;
}

CommandLine::CommandLine(const Command& command, const std::string& first_example, const std::string& second_example)
    : command_(command),
      app_(
          std::make_unique<CLI::App>(std::string(command.help) + "\n\n" + wrapped(command.about, page_width, "") + "\n",
                                     std::string("cephtool ") + command.name)) {
    app_->set_help_flag("-h,--help", "show this help");
    app_->footer("Examples:\n  " + first_example + "\n  " + second_example);
    app_->get_formatter()->column_width(28);
    app_->allow_windows_style_options(false);  // "/film.json" is a file everywhere
}

CommandLine::~CommandLine() = default;

Option CommandLine::add_argument(const std::string& sort, std::string& value, const std::string& help) {
    return Option(app_->add_option(sort, value, help)->type_name(""));
}

Option CommandLine::add_argument(const std::string& sort, std::vector<std::string>& values, const std::string& help) {
    return Option(app_->add_option(sort, values, help)->type_name(""));
}

Option CommandLine::add_flag(const std::string& names, bool& value, const std::string& help) {
    return Option(app_->add_flag(names, value, help));
}

Option CommandLine::add_text(const std::string& names, const std::string& sort, std::string& value,
                             const std::string& help, Fault fault) {
    CLI::Option* const option = app_->add_option(names, value, help)->type_name(sort);
    if (sort == "FILE" || sort == "FOLDER") {
        option->check(
            CLI::Validator([](const std::string& given) { return given.empty() ? "a name is missing" : ""; }, ""));
    }
    if (fault) option->check(CLI::Validator([fault](std::string& given) { return fault(given); }, ""));
    return Option(option);
}

Option CommandLine::add_texts(const std::string& names, const std::string& sort, std::vector<std::string>& values,
                              const std::string& help) {
    return Option(app_->add_option(names, values, help)->allow_extra_args(false)->type_name(sort));
}

Option CommandLine::add_list(const std::string& names, const std::string& sort, std::vector<std::string>& values,
                             const std::string& help) {
    return Option(app_->add_option(names, values, help)->type_name(sort));
}

Option CommandLine::add_lists(const std::string& names, const std::string& sort,
                              std::vector<std::vector<std::string>>& values, const std::string& help) {
    return Option(app_->add_option(names, values, help)->type_name(sort));
}

Option CommandLine::add_pair(const std::string& names, const std::string& sorts, std::vector<std::string>& values,
                             const std::string& help) {
    return Option(app_->add_option(names, values, help)->type_size(2)->expected(1)->type_name(sorts));
}

Option CommandLine::add_number(const std::string& names, std::optional<int>& value, int least, int most,
                               const std::string& help) {
    const CLI::Validator whole(
        [least, most](std::string& given) {
            const std::optional<double> number = number_from(given);
            if (number && *number >= least && *number <= most && *number == std::floor(*number)) return std::string();
            return in_quotes(given) + " is no whole number from " + std::to_string(least) + " to " +
                   std::to_string(most);
        },
        "");
    const auto take = [&value](const std::string& given) { value = static_cast<int>(number_from(given).value()); };
    return Option(app_->add_option_function<std::string>(names, take, help)->check(whole)->type_name("N"));
}

void CommandLine::add_choice(const std::string& names, std::string& value, std::vector<std::string> choices,
                             const std::string& help) {
    limit(app_->add_option(names, value, help), std::move(choices));
}

void CommandLine::add_choice(const std::string& names, std::vector<std::string>& values,
                             std::vector<std::string> choices, const std::string& help) {
    limit(app_->add_option(names, values, help)->allow_extra_args(false), std::move(choices));
}

void CommandLine::add_analyses(std::vector<std::string>& names) {
    add_texts("--analysis", "NAME", names, "title or file name of an analysis, or\na definition file; again for more");
}

void CommandLine::add_analysis_folder(std::string& folder) {
    add_text("--anaitem", "FOLDER", folder, "another folder of analyses");
}

void CommandLine::add_band(std::optional<int>& band) {
    constexpr int highest_band = 9999;  // two columns of two digits
    add_number("--band", band, 0, highest_band, "band code of the norms, in place of the\nband of the patient's stage");
}

void CommandLine::add_population(std::string& name) {
    add_text("--population", "PEOPLE", name, "whose norms count, such as Japanese: see\n\"cephtool analyses\"");
}

void CommandLine::add_language(Language& language, const std::string& help) {
    const auto word = std::make_shared<std::string>("en");
    add_choice("--language", *word, {"en", "ja"}, help);
    when_parsed_.emplace_back([word, &language] { language = *word == "ja" ? Language::japanese : Language::english; });
}

void CommandLine::add_output(std::string& path) {
    add_text("-o,--output", "FILE", path, "write to FILE, not to standard output");
    when_parsed_.emplace_back([&path] { check_output(path, {}); });
}

void CommandLine::add_format(ResultFormat& format, const std::string& output, std::vector<ResultFormat> formats) {
    const std::vector<std::string> names = names_of(formats);
    std::string list = names.front();
    for (std::size_t i = 1; i < names.size(); ++i) list += (i + 1 == names.size() ? " or " : ", ") + names[i];
    const auto name = std::make_shared<std::string>();
    constexpr std::size_t most_beside_the_rest = 30;  // of 80 columns
    const char* const gap = list.size() > most_beside_the_rest ? ";\n" : "; ";
    add_choice("--format", *name, names, list + gap + "else as FILE ends");
    when_parsed_.emplace_back([this, name, names, &format, &output, formats = std::move(formats)] {
        format = name->empty() ? format_of_name(output, formats)
                               : formats[static_cast<std::size_t>(std::ranges::find(names, *name) - names.begin())];
    });
}

ResultFormat CommandLine::format_of_name(const std::string& output, const std::vector<ResultFormat>& formats) const {
    const std::optional<FileEnd> end = end_of(output);
    if (!end) return formats.front();
    if (end->format && std::ranges::find(formats, *end->format) != formats.end()) return *end->format;
    throw Error(
        ExitCode::bad_command_line,
        in_quotes(output) + " ends in " + end->end + ", which \"cephtool " + command_.name + "\" does not write",
        "It writes " + joined(names_of(formats), ", ") + ": say which with --format, or name the file otherwise.");
}

void CommandLine::limit(CLI::Option* option, std::vector<std::string> choices) {
    choices_[option] = choices;
    const CLI::Validator one_of(
        [choices = std::move(choices)](std::string& given) -> std::string {
            if (std::ranges::find(choices, given) != choices.end()) return {};
            const std::string meant = did_you_mean(given, choices);
            return in_quotes(given) + " is none of " + joined(choices, ", ") + (meant.empty() ? "" : ". " + meant);
        },
        "");
    option->check(one_of)->type_name("WHAT");
}

std::vector<std::string> CommandLine::choices(const CLI::Option& option) const {
    const auto found = choices_.find(&option);
    return found == choices_.end() ? std::vector<std::string>{} : found->second;
}

Error CommandLine::unknown_option(const std::string& word) const {
    const std::string option = word.substr(0, word.find('='));
    std::vector<std::string> known;
    for (const CLI::Option* each : app_->get_options())
        for (const std::string& name : each->get_lnames()) known.push_back("--" + name);
    const std::string meant = did_you_mean(option, known);
    return {ExitCode::bad_command_line, "unknown option " + in_quotes(option),
            meant.empty() ? std::string("\"cephtool help ") + command_.name + "\" lists the options." : meant};
}

bool CommandLine::parse(const Arguments& arguments, Streams& streams) {
    if (streams.describe) {
        streams.describe(*this);
        return false;
    }
    try {
        app_->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // CLI11 takes them last first
        for (const auto& work : when_parsed_) work();
        return true;
    } catch (const CLI::CallForHelp&) {
        streams.out << app_->help() << "\n";
        return false;
    } catch (const CLI::ExtrasError& error) {
        for (const std::string& word : app_->remaining())
            if (word.starts_with("-")) throw unknown_option(word);
        throw Error(ExitCode::bad_command_line, error.what(),
                    std::string("\"cephtool help ") + command_.name + "\" shows how it is used.");
    } catch (const CLI::ParseError& error) {
        // A slip in an option's name can leave a required argument missing: name the slip.
        for (const std::string& word : app_->remaining())
            if (word.size() > 1 && word.starts_with("-")) throw unknown_option(word);
        throw Error(ExitCode::bad_command_line, error.what(),
                    std::string("\"cephtool help ") + command_.name + "\" shows how it is used.");
    }
}

void describe(const Command& command, const std::function<void(const CommandLine&)>& show) {
    std::stringstream unused;
    Streams streams{unused, unused, unused};
    streams.describe = show;
    command.run(command, {}, streams);
}

void check_inputs(const std::vector<std::string>& paths) {
    if (std::ranges::count(paths, "-") > 1) {
        throw Error(ExitCode::bad_command_line, "standard input is named more than once", "Give \"-\" only once.");
    }
}

}  // namespace cephtool
