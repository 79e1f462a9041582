#include "host/selection.h"

#include <algorithm>
#include <ostream>

#include "base/wording.h"

namespace cephtool {

Selection::Selection(const std::string& folder, const std::vector<std::string>& names, Streams& streams,
                     std::initializer_list<FolderPart> wanted)
    : folder_(analysis_folder(folder, wanted)), listed_(listed_analyses(folder_)) {
    for (const std::string& note : problem_notes(folder_, FolderPart::analyses))
        streams.err << "note: " << note << "\n";
    for (const std::string& name : names) choose(name, streams);
    if (!names.empty()) return;
    for (const Analysis& analysis : listed_) chosen_.push_back(&analysis);
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
    for (const Analysis* analysis : found)
        if (std::ranges::find(chosen_, analysis) == chosen_.end()) chosen_.push_back(analysis);
}

}  // namespace cephtool
