#include "host/command_line.h"

#include <algorithm>
#include <ostream>
#include <sstream>

#include "host/case_builder.h"
#include "host/case_record.h"
#include "host/csv.h"
#include "host/numbers.h"
#include "host/suggestion.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

// "S,N,A", or "@FILE" with names between commas or in lines of their own.
std::vector<std::string> names_in(const std::string& list) {
    if (list.empty()) return {};
    std::istringstream none;
    const Source source =
        list.starts_with('@') ? checked_text(read_bytes(list.substr(1), none)) : Source{"--landmarks", list};
    std::vector<std::string> names;
    CsvReader reader(source);
    for (CsvRow row; reader.next(row);) {
        if (row.comment) continue;
        for (const CsvField& field : row.fields) names.push_back(field.text);
    }
    return names;
}

}  // namespace

CommandLine::CommandLine(const Command& command, const std::string& first_example, const std::string& second_example)
    : command_(command),
      app_(std::string(command.help) + "\n\n" + wrapped(command.about, page_width, "") + "\n",
           std::string("cephtool ") + command.name) {
    app_.footer("Examples:\n  " + first_example + "\n  " + second_example);
    app_.get_formatter()->column_width(28);
    app_.allow_windows_style_options(false);  // "/film.json" is a file everywhere
}

void CommandLine::add_choice(const std::string& option, std::string& value, std::vector<std::string> choices,
                             const std::string& help) {
    limit(app_.add_option(option, value, help), std::move(choices));
}

void CommandLine::add_choice(const std::string& option, std::vector<std::string>& values,
                             std::vector<std::string> choices, const std::string& help) {
    limit(app_.add_option(option, values, help)->allow_extra_args(false), std::move(choices));
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
    for (const CLI::Option* each : app_.get_options())
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
        app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // CLI11 takes them last first
        return true;
    } catch (const CLI::CallForHelp&) {
        streams.out << app_.help() << "\n";
        return false;
    } catch (const CLI::ExtrasError& error) {
        for (const std::string& word : app_.remaining())
            if (word.starts_with("-")) throw unknown_option(word);
        throw Error(ExitCode::bad_command_line, error.what(),
                    std::string("\"cephtool help ") + command_.name + "\" shows how it is used.");
    } catch (const CLI::ParseError& error) {
        // A slip in an option's name can leave a required argument missing: name the slip.
        for (const std::string& word : app_.remaining())
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

CaseOptionFlags::CaseOptionFlags(CommandLine& line) {
    line.add_choice("--sex", sex_, {"m", "f"}, "m or f: the patient's sex");
    const CLI::Validator scale(
        [](std::string& given) {
            const std::optional<double> number = number_from(given);
            return number && is_scale(*number) ? "" : in_quotes(given) + " is no width of a pixel in millimetres";
        },
        "");
    CLI::App& options = line.options();
    options.add_option("--scale", scale_, "width of a pixel in millimetres")->check(scale)->type_name("MM");
    options.add_flag("--mirror", mirror_, "turn faces round that look left");
    options
        .add_option("--landmarks", landmarks_,
                    "TPS: names of the points in their order;\nS,N,- passes the third over; @FILE has them")
        ->type_name("LIST");
    const CLI::Validator height(
        [](std::string& given) {
            const std::optional<double> number = number_from(given);
            return number && *number > 0 && *number <= largest_coordinate
                       ? ""
                       : in_quotes(given) + " is no height in pixels";
        },
        "");
    options.add_option("--image-height", image_height_, "TPS: height of the image in pixels")
        ->check(height)
        ->type_name("PX");
}

CaseOptions CaseOptionFlags::options() const {
    CaseOptions options;
    if (!sex_.empty()) options.sex = sex_ == "m" ? Sex::male : Sex::female;
    options.mm_per_pixel = number_from(scale_);
    options.mirror = mirror_;
    options.landmarks = names_in(landmarks_);
    options.image_height = number_from(image_height_);
    return options;
}

void check_inputs(const std::vector<std::string>& paths) {
    if (std::ranges::count(paths, "-") > 1) {
        throw Error(ExitCode::bad_command_line, "standard input is named more than once", "Give \"-\" only once.");
    }
}

}  // namespace cephtool
