#include "results/analysis_folder.h"

#include <algorithm>
#include <array>

#include "base/path.h"
#include "base/program_folder.h"
#include "base/suggestion.h"
#include "base/utf8.h"
#include "base/wording.h"

namespace cephtool {
namespace {

// As of a file that the library reads itself.
constexpr InputLimit definition_limit{
    std::size_t{16} << 20, "16 MiB",
    "A definition file is some kilobytes of text. Give the file that holds the items."};

std::string shown_path(const std::filesystem::path& path) {
    return shown_name(utf8_from_path(std::filesystem::path(path).make_preferred()));
}

std::string last_part(const std::filesystem::path& path) {
    return printable(utf8_from_path(path.filename()));
}

std::string without_extension(const std::string& file) {
    return file.substr(0, file.rfind('.'));
}

// Whether the name is this title, or this file with or without extension, without regard to case.
bool is_named(std::string_view name, const std::string& title, const std::string& file) {
    const std::string wanted = lower_case(name), lower_file = lower_case(file);
    return wanted == lower_case(title) || wanted == lower_file || wanted == without_extension(lower_file);
}

}  // namespace

std::string shipped_analyses() {
    return utf8_from_path(shared_folder() / "anaitem");
}

AnalysisFolder analysis_folder(const std::string& name, std::initializer_list<FolderPart> wanted) {
    const std::string path = name.empty() ? shipped_analyses() : name;
    AnalysisFolder folder(path_from_utf8(path));
    for (const tool::FolderProblem& problem : folder.problems()) {
        if (problem.part == FolderPart::folder) {
            throw Error(ExitCode::bad_command_line, printable(path) + " is no folder of analyses",
                        "Name one with --anaitem FOLDER.");
        }
        if (!problem.is_there || std::ranges::find(wanted, problem.part) == wanted.end()) continue;
        throw Error(ExitCode::bad_input,
                    shown_path(problem.file) + " is there, but can't be read: " + printable(problem.reason),
                    "Without it the results would be others. Check that you may read it, and the disk.");
    }
    return folder;
}

std::vector<std::string> problem_notes(const AnalysisFolder& folder, FolderPart part) {
    std::vector<std::string> notes;
    for (const tool::FolderProblem& problem : folder.problems()) {
        if (problem.part != part) continue;
        notes.push_back(shown_path(problem.file) + " is listed, but can't be read: " + printable(problem.reason));
    }
    return notes;
}

std::vector<Analysis> listed_analyses(const AnalysisFolder& folder) {
    std::vector<Analysis> all;
    for (const tool::Kind kind : tool::all_kinds) std::ranges::copy(folder.analyses(kind), std::back_inserter(all));
    return all;
}

const Analysis* AnalysisFamily::of(std::string_view population) const {
    const auto is_asked_for = [&](const Analysis* analysis) {
        return analysis->population() && lower_case(analysis->population()->name) == lower_case(population);
    };
    if (population.empty() || is_asked_for(base)) return base;
    const auto found = std::ranges::find_if(variants, is_asked_for);
    return found == variants.end() ? base : *found;
}

std::vector<AnalysisFamily> families_of(std::span<const Analysis> analyses) {
    const auto base_of = [&](const Analysis& variant) -> const Analysis* {
        if (variant.variant_of().empty()) return nullptr;
        const auto folder = variant.file().parent_path();
        const std::string file = lower_case(utf8_from_path(folder / path_from_utf8(variant.variant_of())));
        const auto base = std::ranges::find_if(analyses, [&](const Analysis& other) {
            return other.kind() == variant.kind() && other.variant_of().empty() &&
                   lower_case(utf8_from_path(other.file())) == file;
        });
        return base == analyses.end() ? nullptr : &*base;
    };
    std::vector<AnalysisFamily> families;
    for (const Analysis& analysis : analyses)
        if (!base_of(analysis)) families.emplace_back(&analysis);
    for (const Analysis& analysis : analyses)
        if (const Analysis* const base = base_of(analysis))
            std::ranges::find(families, base, &AnalysisFamily::base)->variants.push_back(&analysis);
    return families;
}

std::vector<Analysis> analyses_in_file(const std::string& path, std::istream& standard_input,
                                       std::vector<std::string>& notes) {
    const Source source = read_bytes(path, standard_input, definition_limit);
    const bool is_ascii = std::ranges::none_of(source.text, [](char c) { return (c & 0x80) != 0; });
    if (!is_ascii && first_malformed(source.text) == std::string::npos) {
        notes.push_back(shown_name(path) +
                        " is UTF-8, but definition files are read in code page 932: names and units come out as other "
                        "characters. Convert it: iconv -f UTF-8 -t CP932 OLD > NEW, or save it as Shift JIS");
    }
    std::vector<Analysis> analyses;
    for (const Kind kind : all_kinds)
        analyses.push_back(*Analysis::from_text(static_cast<tool::Kind>(kind), path_from_utf8(path), source.text));
    if (analyses.front().items().empty()) {
        throw source.error("this definition file holds no item",
                           "Items stand below a line \"Calc:\", one a line: SNA=angle1([S],[N],[A])");
    }
    return analyses;
}

bool names_one_population(const std::string& name) {
    constexpr std::string_view others[] = {"Not told", "Various", "Mixed"};
    return std::ranges::find(others, name) == std::end(others);
}

Kind case_kind(const Analysis& analysis) {
    return static_cast<Kind>(tool::measured_on(analysis.kind()));
}

const char* kind_name(const Analysis& analysis) {
    switch (analysis.kind()) {
        case tool::Kind::diagnosis: return "diagnosis";
        case tool::Kind::surgery: return "surgery";
        default: return name_of(case_kind(analysis));
    }
}

std::string title_of(const Analysis& analysis) {
    return printable(analysis.title());
}

std::string comment_of(const Analysis& analysis) {
    return printable(analysis.comment());
}

std::string file_of(const Analysis& analysis) {
    return last_part(analysis.file());
}

std::string short_name(const Analysis& analysis) {
    return without_extension(file_of(analysis));
}

std::vector<const Analysis*> named(std::span<const Analysis> analyses, std::string_view name) {
    std::vector<const Analysis*> found;
    for (const Analysis& analysis : analyses)
        if (is_named(name, title_of(analysis), file_of(analysis))) found.push_back(&analysis);
    return found;
}

Error unknown_analysis(std::span<const Analysis> analyses, std::string_view name) {
    std::vector<std::string> names;
    for (const Analysis& analysis : analyses) {
        names.push_back(title_of(analysis));
        names.push_back(short_name(analysis));
    }
    const std::string meant = did_you_mean(name, names);
    return {ExitCode::bad_command_line, "there is no analysis " + in_quotes(name),
            (meant.empty() ? "" : meant + " ") + "\"cephtool analyses\" lists them."};
}

std::vector<KindOfMode> listed_modes(const AnalysisFolder& folder, std::span<const Kind> kinds) {
    std::vector<KindOfMode> modes;
    for (const Kind kind : kinds)
        for (const DisplayMode& mode : folder.modes(static_cast<tool::Kind>(kind))) modes.push_back({kind, &mode});
    return modes;
}

std::string hex(tool::Colour colour) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned part : {colour.red, colour.green, colour.blue}) {
        text += digits[part >> 4];
        text += digits[part & 15];
    }
    return text;
}

std::string title_of(const DisplayMode& mode) {
    return printable(mode.title);
}

std::string file_of(const DisplayMode& mode) {
    return last_part(mode.file);
}

std::string short_name(const DisplayMode& mode) {
    return without_extension(file_of(mode));
}

std::vector<KindOfMode> modes_named(std::span<const KindOfMode> modes, const std::string& name,
                                    const std::string& wanted_for) {
    std::vector<KindOfMode> found;
    std::vector<std::string> known;
    for (const KindOfMode& each : modes) {
        const DisplayMode& mode = *each.mode;
        if (lower_case(name) == std::to_string(mode.number) || is_named(name, title_of(mode), file_of(mode)))
            found.push_back(each);
        known.insert(known.end(), {title_of(mode), short_name(mode)});
    }
    if (found.empty()) {
        const std::string meant = did_you_mean(name, known);
        throw Error(ExitCode::bad_command_line, "there is no display mode " + in_quotes(name) + wanted_for,
                    (meant.empty() ? "" : meant + " ") + "\"cephtool modes\" lists them.");
    }
    return found;
}

DisplayMode chosen_mode(const AnalysisFolder& folder, Kind kind, const std::string& name) {
    const std::vector<KindOfMode> modes = listed_modes(folder, std::array{kind});
    if (name.empty()) return modes.empty() ? DisplayMode{} : *modes.front().mode;
    return *modes_named(modes, name, std::string(" for a ") + name_of(kind) + " case").front().mode;
}

}  // namespace cephtool
