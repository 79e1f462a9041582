#include "host/selection.h"

#include <algorithm>
#include <ostream>

#include "base/suggestion.h"
#include "base/wording.h"

namespace cephtool {

Selection::Selection(const std::string& folder, const std::vector<std::string>& names, Streams& streams,
                     std::initializer_list<FolderPart> wanted)
    : folder_(analysis_folder(folder, wanted)), listed_(listed_analyses(folder_)), families_(families_of(listed_)) {
    for (const std::string& note : problem_notes(folder_, FolderPart::analyses))
        streams.err << "note: " << note << "\n";
    for (const std::string& name : names) choose(name, streams);
    if (names.empty()) chosen_ = families_;
}

void Selection::choose(const std::string& name, Streams& streams) {
    const bool is_path = name.find_first_of("/\\") != std::string::npos || lower_case(name).ends_with(".txt");
    std::vector<const Analysis*> found = named(listed_, name);
    if (found.empty() && !is_path) {
        Error unknown = unknown_analysis(listed_, name);
        unknown.way_out += " A definition file is given by its path.";
        throw unknown;
    }
    if (found.empty()) {
        std::vector<std::string> notes;
        from_files_.push_back(analyses_in_file(name, streams.in, notes));
        for (const std::string& note : notes) streams.err << "note: " << note << "\n";
        for (const Analysis& analysis : from_files_.back()) found.push_back(&analysis);
    }
    for (const Analysis* analysis : found) {
        if (std::ranges::find(chosen_, analysis, &AnalysisFamily::base) != chosen_.end()) continue;
        const auto family = std::ranges::find(families_, analysis, &AnalysisFamily::base);
        chosen_.push_back(family == families_.end() ? AnalysisFamily(analysis) : *family);
    }
}

void Selection::check_population(const std::string& population) const {
    if (population.empty()) return;
    std::vector<std::string> known;
    const auto add = [&](const Analysis& analysis) {
        const auto& whose = analysis.population();
        if (whose && names_one_population(whose->name)) known.push_back(whose->name);
    };
    for (const Analysis& analysis : listed_) add(analysis);
    for (const auto& file : from_files_)
        for (const Analysis& analysis : file) add(analysis);
    if (std::ranges::find(known, lower_case(population), lower_case) != known.end()) return;
    const std::string meant = did_you_mean(population, known);
    throw Error(ExitCode::bad_command_line, "no analysis has norms of the population " + in_quotes(population),
                (meant.empty() ? "" : meant + " ") + "\"cephtool analyses\" lists whose norms there are.");
}

}  // namespace cephtool
