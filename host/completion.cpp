#include "host/completion.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <regex>
#include <set>

#include "cases/case_format.h"
#include "host/command_line.h"
#include "results/analysis_folder.h"

namespace cephtool {
namespace {

// "--format=js" as two words, however a shell has cut it.
Arguments without_equal_signs(const Arguments& words) {
    Arguments parts;
    bool after_sign = false;
    for (const std::string& word : words) {
        const std::size_t sign = word.find('=');
        const bool is_option = word.starts_with("--") && sign != std::string::npos;
        if (is_option) parts.push_back(word.substr(0, sign));
        if (is_option) parts.push_back(word.substr(sign + 1));
        if (!is_option && word != "=") parts.push_back(word);
        after_sign = word == "=";
    }
    if (parts.empty() || after_sign) parts.emplace_back();
    return parts;
}

class Completion {
 public:
    Completion(const CommandLine& line, std::span<const std::string> words, std::ostream& out)
        : line_(line), words_(words), begun_(words.back()), out_(out) {}

    void offer_next() {
        const CLI::Option* const option = taker_of_last();
        if (begun_.starts_with("-") && (!option || option->get_positional())) {
            for (const CLI::Option* each : line_.app().get_options())
                for (const std::string& name : each->get_lnames()) offer("--" + name, each->get_description());
        } else if (option) {
            offer_values(*option);
        }
    }

    void offer(const std::string& word, std::string help) {
        if (!word.starts_with(begun_) || !offered_.insert(word).second) return;
        std::ranges::replace(help, '\n', ' ');
        out_ << word << "\t" << help << "\n";
    }

 private:
    // The option or argument that the last word is for; null when there is none left.
    const CLI::Option* taker_of_last() const {
        const CLI::Option* option = nullptr;
        int wanted = 0;  // words that `option` still takes
        std::size_t arguments = 0;
        for (const std::string& word : words_.first(words_.size() - 1)) {
            if (wanted > 0) {
                --wanted;
            } else if (word.starts_with("-") && word != "-") {
                option = line_.app().get_option_no_throw(word);
                wanted = option && option->get_expected_max() > 0 ? option->get_type_size_max() : 0;
            } else {
                ++arguments;
            }
        }
        if (wanted > 0) return option;
        const auto positionals = line_.app().get_options([](const CLI::Option* o) { return o->get_positional(); });
        if (positionals.empty()) return nullptr;
        const CLI::Option* const last = positionals.back();
        if (arguments >= positionals.size()) return last->get_items_expected_max() > 1 ? last : nullptr;
        return positionals[arguments];
    }

    // The word that help shows for a value says of what sort it is.
    void offer_values(const CLI::Option& option) {
        const std::string sort = option.get_positional() ? option.get_name(true) : option.get_type_name();
        for (const std::string& choice : line_.choices(option)) offer(choice, "");
        if (sort == "FOLDER") out_ << ":folders\n";
        if (sort == "FILE" || sort == "IN" || sort == "PATH") out_ << ":files" << endings_in(option) << "\n";
        if (sort == "CASE" || sort == "CASES") {
            out_ << ":files";
            for (const CaseFormat& format : case_formats()) out_ << " " << format.extension;
            out_ << "\n";
        }
        if (sort == "NAME" || sort == "NAME:ITEMS") offer_analyses();
        if (sort == "PEOPLE") offer_populations();
        if (sort == "MODE") offer_modes();
    }

    // Of "FILE.svg or FILE.pdf", " .svg .pdf".
    static std::string endings_in(const CLI::Option& option) {
        const std::string help = option.get_description();
        std::string endings;
        if (help.find("JPEG") != std::string::npos) endings += " .jpg .jpeg .JPG .JPEG";
        if (help.find("PNG") != std::string::npos) endings += " .png .PNG";
        const std::regex file("FILE([.][a-z]+)");
        for (std::sregex_iterator found(help.begin(), help.end(), file), end; found != end; ++found)
            endings += " " + found->str(1);
        return endings;
    }

    void offer_analyses() {
        const AnalysisFolder folder = analysis_folder(folder_name(), {});
        for (const Analysis& analysis : listed_analyses(folder)) offer(short_name(analysis), title_of(analysis));
        if (offered_.empty()) out_ << ":files .txt\n";
    }

    void offer_populations() {
        const AnalysisFolder folder = analysis_folder(folder_name(), {});
        for (const Analysis& analysis : listed_analyses(folder))
            if (analysis.population()) offer(analysis.population()->name, "");
    }

    void offer_modes() {
        const AnalysisFolder folder = analysis_folder(folder_name(), {});
        for (const KindOfMode& each : listed_modes(folder)) offer(short_name(*each.mode), title_of(*each.mode));
    }

    std::string folder_name() const {
        const auto option = std::ranges::find(words_, "--anaitem");
        return words_.end() - option > 2 ? option[1] : std::string();
    }

    const CommandLine& line_;
    std::span<const std::string> words_;
    const std::string& begun_;
    std::ostream& out_;
    std::set<std::string> offered_;
};

}  // namespace

void complete(const Arguments& words, std::ostream& out) {
    const Arguments parts = without_equal_signs(words);
    const bool wants_command = parts.size() == 1 || (parts.size() == 2 && parts[0] == "help");
    for (const Command& command : commands()) {
        if (wants_command && std::string_view(command.name).starts_with(parts.back()))
            out << command.name << "\t" << command.help << "\n";
        if (wants_command || parts[0] != command.name || parts[0] == "help") continue;
        describe(command,
                 [&](const CommandLine& line) { Completion(line, std::span(parts).subspan(1), out).offer_next(); });
    }
}

}  // namespace cephtool
