#include "tracing/landmark_finder.h"

#include <AnalysisSheet.h>
#include <LandmarkTable.h>

#include <algorithm>

#include "base/library_name.h"

namespace cephtool {

// The engine takes a missing landmark inside a construction for (0, 0), and would make a point of it.
bool LandmarkFinder::lacks_something(const VirtualLandmark& made) {
    const std::optional<CString> construction = library_name(made.construction);
    if (!construction) return true;
    const std::string point = static_cast<const char*>(*construction);
    const std::string formula = "Calc:\nlength=len(" + point + "," + point + ")\n";
    const AnalysisSheet sheet(static_cast<int>(case_.kind), formula.data(), formula.size());
    return sheet.GetCount() != 1 || sheet.Missing(0, SheetPart::value, record_.subject(0, 0)).GetSize() > 0;
}

std::optional<Position> LandmarkFinder::operator()(const std::string& name) {
    for (const auto* placed : {&case_.landmarks, &case_.user})
        for (const Landmark& landmark : *placed)
            if (landmark.name == name) return landmark.position;
    const auto made = std::ranges::find(case_.virtuals, name, &VirtualLandmark::name);
    if (made != case_.virtuals.end() && lacks_something(*made)) return {};
    const std::optional<CString> bytes = library_name(name);
    if (!bytes) return {};
    const CPointD point = LandmarkTable::Position(static_cast<int>(case_.kind), *bytes, record_.subject(0, 0));
    if (point.x == 0 && point.y == 0) return {};
    return Position{point.x, point.y};
}

std::vector<Landmark> LandmarkFinder::all() {
    std::vector<Landmark> placed = case_.landmarks;
    placed.insert(placed.end(), case_.user.begin(), case_.user.end());
    for (const VirtualLandmark& made : case_.virtuals)
        if (const auto position = (*this)(made.name)) placed.push_back({made.name, *position});
    return placed;
}

}  // namespace cephtool
