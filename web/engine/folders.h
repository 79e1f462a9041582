// The analysis folders that are open in the page: the one that ships and clinics' own. Analyses and display modes have
// numbers by which JavaScript speaks of them.
#pragma once

#include <string>
#include <vector>

#include "results/analysis_folder.h"
#include "web/engine/json.h"

namespace engine {

struct NamedBytes {
    std::string name, bytes;
};

// Number of the folder that ships.
inline constexpr int shipped_folder = 0;

// The number of a new folder. Throws an Error when there is nothing in it to measure with.
int open_folder(const std::vector<NamedBytes>& files);
void close_folder(int folder);

// {problems, analyses, modes}
Json description_of(int folder);

const cephtool::AnalysisFolder& folder_numbered(int folder);
// All that it lists.
const std::vector<cephtool::Analysis>& analyses_of(int folder);

// Of its folder, or of the one that ships where that has none.
const tool::LandmarkErrors& landmark_errors_of(const cephtool::Analysis& analysis);

// These throw an Error for a number that was closed or never given.
const cephtool::Analysis& analysis_numbered(int analysis);
std::vector<const cephtool::Analysis*> analyses_numbered(const std::vector<int>& analyses);
const cephtool::DisplayMode& mode_numbered(int mode);

}  // namespace engine
