// The analyses that a command line names.
#pragma once

#include <deque>
#include <span>
#include <string>
#include <vector>

#include "host/command.h"
#include "results/analysis_folder.h"

namespace cephtool {

class Selection {
 public:
    // Of the folder of this name (analysis_folder): titles, file names, and definition files of the person's own; no
    // name takes all that it lists. A variant for another population is taken when it is named itself, else it comes
    // with its analysis. What is listed but can't be read is noted. Throws an Error for a name that is
    // nothing of that, and when a file of the parts that are wanted of the folder beside its analyses can't be read.
    Selection(const std::string& folder, const std::vector<std::string>& names, Streams& streams,
              std::initializer_list<FolderPart> wanted = {FolderPart::analyses});

    const AnalysisFolder& folder() const { return folder_; }
    // All that it lists.
    const std::vector<Analysis>& listed() const { return listed_; }
    // Valid as long as this object.
    std::span<const AnalysisFamily> chosen() const { return chosen_; }
    // Throws an Error when no analysis that is known here has norms of the population; "" asks for none.
    void check_population(const std::string& population) const;

 private:
    void choose(const std::string& name, Streams& streams);

    AnalysisFolder folder_;
    std::vector<Analysis> listed_;
    std::deque<std::vector<Analysis>> from_files_;
    std::vector<AnalysisFamily> families_;  // of the listed ones
    std::vector<AnalysisFamily> chosen_;
};

}  // namespace cephtool
