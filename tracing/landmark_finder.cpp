#include "tracing/landmark_finder.h"

#include <LandmarkTable.h>

#include "base/library_name.h"

namespace cephtool {

std::optional<Position> LandmarkFinder::operator()(const std::string& name) {
    for (const auto* placed : {&case_.landmarks, &case_.user})
        for (const Landmark& landmark : *placed)
            if (landmark.name == name) return landmark.position;
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
