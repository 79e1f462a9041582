#include "cases/vertebrae.h"

#include <algorithm>
#include <optional>

#include "cases/case_record.h"

namespace cephtool {
namespace {

struct VertebraPoint {
    const char* name;
    int index;                  // in tagCVBA; none for a corner that only serves to make an end of the depth
    const char *upper, *lower;  // of an end of the depth: the corners between which it lies; else null
};

constexpr int none = -1;

constexpr VertebraPoint vertebra_points[] = {
    {"C3ua", 11, nullptr, nullptr}, {"C3up", none, nullptr, nullptr}, {"C3da", 13, "C3ua", "C3la"},
    {"C3dp", 12, "C3up", "C3lp"},   {"C3la", 15, nullptr, nullptr},   {"C3lp", 14, nullptr, nullptr},
    {"C4ua", 17, nullptr, nullptr}, {"C4up", 16, nullptr, nullptr},   {"C4da", 19, "C4ua", "C4la"},
    {"C4dp", 18, "C4up", "C4lp"},   {"C4la", 21, nullptr, nullptr},   {"C4lp", 20, nullptr, nullptr},
};

bool is_optional(const std::string& name) {
    return std::ranges::find(vertebra_points, name, &VertebraPoint::name)->index == none;
}

std::optional<Position> placed(const Case& record, const std::string& name) {
    const auto found = std::ranges::find(record.vertebrae, name, &Landmark::name);
    if (found == record.vertebrae.end()) return {};
    return found->position;
}

std::optional<Position> middle(const std::optional<Position>& a, const std::optional<Position>& b) {
    if (!a || !b) return {};
    return Position{(a->x + b->x) / 2, (a->y + b->y) / 2};
}

}  // namespace

std::vector<std::string> vertebra_point_names() {
    std::vector<std::string> names;
    for (const VertebraPoint& point : vertebra_points) names.emplace_back(point.name);
    return names;
}

CervicalPoints cervical_points(const Case& record) {
    CervicalPoints cervical;
    for (const VertebraPoint& point : vertebra_points) {
        if (point.index == none) continue;
        std::optional<Position> position = placed(record, point.name);
        if (!position && point.upper) {
            const std::optional<Position> upper = placed(record, point.upper);
            position = middle(upper, placed(record, point.lower));
            if (position) cervical.made.emplace_back(point.name);
            // Corners that are needed for themselves are named for themselves; with them the end can be made.
            if (!position && (upper || !is_optional(point.upper))) continue;
        }
        if (position) {
            cervical.points.Point[point.index] = fine_point(*position);
        } else {
            cervical.missing.emplace_back(point.name);
        }
    }
    return cervical;
}

}  // namespace cephtool
