#include "host/manual/manual_page.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "base/wording.h"

namespace cephtool {
namespace {

// Text as roff source. Line ends become blanks, for roff fills lines itself.
std::string roff(const std::string& text) {
    std::string source;
    for (const char byte : text) {
        if (byte == '\\')
            source += "\\e";
        else if (byte == '-')
            source += "\\-";
        else
            source += byte == '\n' ? ' ' : byte;
    }
    return source.starts_with(".") || source.starts_with("'") ? "\\&" + source : source;
}

std::string head(const std::string& name, const std::string& help) {
    std::string title = name;
    std::ranges::transform(title, title.begin(), [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
    return ".TH " + roff(title) + " 1 \"\" \"cephtool " CEPHTOOL_VERSION "\" \"User Commands\"\n.SH NAME\n" +
           roff(name) + " \\- " + roff(help) + "\n.SH SYNOPSIS\n";
}

std::string exit_codes() {
    std::string text = ".SH EXIT STATUS\n";
    for (const char* code : {"0\nDone.", "1\nAn input was bad.", "2\nThe command line was bad."})
        text += std::string(".TP\n") + code + "\n";
    return text;
}

std::string term(const std::string& words, const std::string& text) {
    return ".TP\n" + words + "\n" + roff(text) + "\n";
}

std::string bold(const std::string& text) {
    return "\\fB" + roff(text) + "\\fR";
}

std::string slanted(const std::string& text) {
    return "\\fI" + roff(text) + "\\fR";
}

// "-o, --output FILE"
std::string option_words(const CommandLine& line, const CLI::Option& option) {
    std::string words;
    for (const std::string& name : option.get_snames()) words += (words.empty() ? "" : ", ") + bold("-" + name);
    for (const std::string& name : option.get_lnames()) words += (words.empty() ? "" : ", ") + bold("--" + name);
    const std::vector<std::string> choices = line.choices(option);
    if (!choices.empty()) {
        words += " ";
        for (const std::string& choice : choices) words += (&choice == &choices.front() ? "" : "|") + bold(choice);
    } else if (option.get_expected_max() > 0) {
        words += " " + slanted(option.get_type_name());
    }
    return words;
}

std::string argument_words(const CLI::Option& argument) {
    const std::string name = slanted(argument.get_name(true));
    const std::string many = argument.get_items_expected_max() > 1 ? "..." : "";
    return argument.get_required() ? name + many : "[" + name + many + "]";
}

std::string help_of(const CLI::Option& option) {
    return (option.get_required() && !option.get_positional() ? "Required: " : "") + option.get_description();
}

}  // namespace

std::string manual_page() {
    std::string page = head("cephtool", "measure cephalometric landmarks and compare them with norms") +
                       ".B cephtool\n" + slanted("COMMAND") + " ...\n.br\n.B cephtool help\n[" + slanted("COMMAND") +
                       "]\n.br\n.B cephtool \\-\\-version\n.SH COMMANDS\n";
    for (const Command& command : commands()) {
        const std::string name = command.name;
        page += term(bold(name == "help" ? name : "cephtool-" + name) + (name == "help" ? "" : "(1)"), command.help);
    }
    page += exit_codes();
    page += ".SH ENVIRONMENT\n" + term(bold("NO_COLOR"), "When it is set, nothing is coloured on a terminal.");
    return page + ".SH NOTES\n" +
           roff("What is printed is a calculation from the landmarks that are given, not a diagnosis.") + "\n";
}

std::string manual_page(const CommandLine& line) {
    const Command& command = line.command();
    std::string page = head(std::string("cephtool-") + command.name, command.help) + ".B cephtool " + command.name +
                       "\n[" + slanted("OPTIONS") + "]";
    std::string arguments, options;
    for (const CLI::Option* option : line.app().get_options()) {
        if (option->get_positional()) {
            page += " " + argument_words(*option);
            arguments += term(slanted(option->get_name(true)), help_of(*option));
        } else {
            options += term(option_words(line, *option), help_of(*option));
        }
    }
    page += "\n.SH DESCRIPTION\n" + roff(command.about) + "\n";
    if (!arguments.empty()) page += ".SH ARGUMENTS\n" + arguments;
    page += ".SH OPTIONS\n" + options + exit_codes() + ".SH EXAMPLES\n.EX\n";
    std::istringstream footer(line.app().get_footer());
    for (std::string text; std::getline(footer, text);)
        if (text.starts_with("  ")) page += roff(std::string(trimmed(text))) + "\n";
    return page + ".EE\n.SH SEE ALSO\n.BR cephtool (1)\n";
}

}  // namespace cephtool
