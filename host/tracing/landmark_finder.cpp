#include "host/tracing/landmark_finder.h"

#include <CephCalc.h>

#include "host/library_name.h"

namespace cephtool {
namespace {

double scale_of(Kind kind, const void* record) {
    switch (kind) {
        case Kind::lateral: return static_cast<const tagPOINTLAT*>(record)->Scale;
        case Kind::frontal: return static_cast<const tagPOINTPA*>(record)->Scale;
        case Kind::model: return static_cast<const tagPOINTMO*>(record)->Scale;
    }
    return 1;
}

}  // namespace

std::optional<Position> LandmarkFinder::operator()(const std::string& name) {
    for (const auto* placed : {&case_.landmarks, &case_.user})
        for (const Landmark& landmark : *placed)
            if (landmark.name == name) return landmark.position;
    const std::optional<CString> bytes = library_name(name);
    if (!bytes) return {};
    const SheetSubject subject = record_.subject(0, 0);
    const CPointD point = CCephCalc::PointPos(static_cast<int>(case_.kind), *bytes, subject.record, subject.kCount,
                                              subject.kPoints, subject.uCount, subject.uPoints);
    if (point.x == 0 && point.y == 0) return {};
    // The record may count in parts of a pixel.
    const double pixels = scale_of(case_.kind, subject.record) / case_.mm_per_pixel.value();
    return Position{point.x * pixels, point.y * pixels};
}

std::vector<Landmark> LandmarkFinder::all() {
    std::vector<Landmark> placed = case_.landmarks;
    placed.insert(placed.end(), case_.user.begin(), case_.user.end());
    for (const VirtualLandmark& made : case_.virtuals)
        if (const auto position = (*this)(made.name)) placed.push_back({made.name, *position});
    return placed;
}

}  // namespace cephtool
