#include "report/superimposition.h"

#include <cmath>

#include "tracing/landmark_finder.h"

namespace cephtool {

std::vector<std::string> missing_for(const Registration& registration, const Case& record) {
    LandmarkFinder find(record);
    std::vector<std::string> missing;
    for (const char* name : {registration.at, registration.toward})
        if (!find(name)) missing.emplace_back(name);
    return missing;
}

std::optional<AffineMap> superimposed(const Registration& registration, const Case& base, const Case& other) {
    LandmarkFinder in_base(base), in_other(other);
    const auto to_at = in_base(registration.at), to_end = in_base(registration.toward);
    const auto from_at = in_other(registration.at), from_end = in_other(registration.toward);
    if (!to_at || !to_end || !from_at || !from_end) return {};
    // As complex numbers: the map is z -> w z + v with |w| the ratio of the pixels' sizes.
    const Position from{from_end->x - from_at->x, from_end->y - from_at->y};
    const Position to{to_end->x - to_at->x, to_end->y - to_at->y};
    const double lengths = std::sqrt((from.x * from.x + from.y * from.y) * (to.x * to.x + to.y * to.y));
    if (!(lengths > 0)) return {};
    const double size = other.mm_per_pixel.value() / base.mm_per_pixel.value() / lengths;
    const double real = (from.x * to.x + from.y * to.y) * size, imaginary = (from.x * to.y - from.y * to.x) * size;
    AffineMap map{real, -imaginary, imaginary, real, 0, 0};
    const Position turned = map(*from_at);
    map.x = to_at->x - turned.x;
    map.y = to_at->y - turned.y;
    return map;
}

Tracing moved(Tracing tracing, const AffineMap& map) {
    for (FittedCurve& curve : tracing.outlines)
        for (Position& point : curve.outline.points) point = map(point);
    for (TracingLine& line : tracing.lines) {
        line.from = map(line.from);
        line.to = map(line.to);
    }
    for (Landmark& landmark : tracing.landmarks) landmark.position = map(landmark.position);
    for (TracingValue& value : tracing.values) value.corner = map(value.corner);
    return tracing;
}

}  // namespace cephtool
