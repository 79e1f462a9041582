#include "MeasuredShape.h"

#include <utility>

namespace tool {

std::vector<Segment> segments_of(const MeasuredShape& shape) {
    using Ends = std::pair<std::size_t, std::size_t>;  // places among the points
    static const std::vector<Ends> ends_of[] = {
        {{0, 1}},                          // length
        {{0, 1}},                          // length_right
        {{0, 1}},                          // length_down
        {{1, 0}, {1, 2}},                  // angle
        {{0, 1}, {2, 3}},                  // line_angle
        {{0, 1}},                          // middle
        {{0, 3}, {1, 3}, {2, 3}},          // foot
        {{0, 4}, {1, 4}, {2, 4}, {3, 4}},  // crossing
        {{0, 1}, {0, 2}, {0, 3}},          // bisector
        {{0, 2}},                          // extension
        {{0, 1}, {2, 3}, {4, 5}},          // effective_a
    };
    std::vector<Segment> segments;
    const auto kind = static_cast<std::size_t>(shape.kind);
    if (kind >= std::size(ends_of)) return segments;
    for (const auto& [from, to] : ends_of[kind])
        if (from < shape.points.size() && to < shape.points.size())
            segments.push_back({shape.points[from], shape.points[to]});
    return segments;
}

}  // namespace tool
