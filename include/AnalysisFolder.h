// Addition of this project: a folder of analyses, display modes, coefficients and eras, each of its files read once.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "Analysis.h"
#include "BoneAge.h"
#include "DisplayMode.h"
#include "EraCalendar.h"
#include "LandmarkErrors.h"
#include "framework/export.h"

namespace tool {

enum class FolderPart { folder, analyses, modes, bone_age, eras, landmark_errors };

// A file that a catalogue lists, or that is there, and could not be read. The folder is as if it were not.
struct FolderProblem {
    FolderPart part = FolderPart::folder;
    std::filesystem::path file;
    bool is_there = false;  // what it holds is not known; else it is only promised
    std::string reason;     // in UTF-8: "No such file or directory"
};

// Never changes, and may be shared by threads; copies share what was read.
class TOOL_API AnalysisFolder {
 public:
    explicit AnalysisFolder(const std::filesystem::path& folder, int cast_decimals = Analysis::usual_cast_decimals);

    const std::filesystem::path& path() const;
    // In the order of the catalogue; of surgery the one that there is.
    std::span<const Analysis> analyses(Kind kind) const;
    // CalcForm/Ricketts.txt, whose stages CCephCalc::Get_RickettsStage gives, listed or not; null without it.
    const Analysis* ricketts() const;
    // Those with a title, in the order of the list; of diagnosis and surgery none.
    std::span<const DisplayMode> modes(Kind kind) const;
    const BoneAgeCoefficients& bone_age(Sex sex) const;
    const std::optional<EraCalendar>& eras() const;  // of Era.dat; nothing without it
    const LandmarkErrors& landmark_errors() const;  // of LandmarkError.txt; of no landmark without it
    std::span<const FolderProblem> problems() const;

 private:
    struct Body;
    std::shared_ptr<const Body> body_;
};

}  // namespace tool
