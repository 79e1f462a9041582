#include "host/case/mirror.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "host/case/case_record.h"

namespace cephtool {
namespace {

// The first lies in front of the second in every face, by enough that no digitiser's error turns them round.
struct Pair {
    const char *front, *rear;
};
constexpr Pair pairs[] = {
    {"N", "S"},   {"Or", "Po"},  {"ANS", "PNS"}, {"A", "PNS"}, {"A", "S"},       {"Pog", "Go"},    {"Me", "Go"},
    {"Gn", "Go"}, {"N", "Ba"},   {"Pog", "Ar"},  {"B", "Go"},  {"U1", "UMo"},    {"L1", "LMo"},    {"U1", "Ar"},
    {"TN", "Po"}, {"Pog", "Cd"}, {"A", "Ptm"},   {"L1", "Go"}, {"C3la", "C3lp"}, {"C4la", "C4lp"},
};
constexpr int fewest_pairs = 3;
constexpr int most_contradicting_of = 4;

std::optional<Position> placed(const Case& record, const char* name) {
    for (const auto* landmarks : {&record.landmarks, &record.vertebrae}) {
        const auto found = std::ranges::find(*landmarks, name, &Landmark::name);
        if (found != landmarks->end()) return found->position;
    }
    return {};
}

// Calls `visit` with every point of the case, which it may change.
template <class Record, class Visit>
void for_each_point(Record& record, Visit visit) {
    for (auto* landmarks : {&record.landmarks, &record.vertebrae, &record.user})
        for (auto& landmark : *landmarks) visit(landmark.position, true);
    for (auto& outline : record.outlines)
        for (auto& point : outline.points) visit(point, false);
}

}  // namespace

Facing facing(const Case& record) {
    if (record.kind != Kind::lateral) return Facing::unknown;
    int right = 0, left = 0;
    for (const Pair& pair : pairs) {
        const auto front = placed(record, pair.front), rear = placed(record, pair.rear);
        if (!front || !rear) continue;
        right += front->x > rear->x;
        left += front->x < rear->x;
    }
    if (right + left < fewest_pairs || std::min(right, left) * most_contradicting_of > right + left) {
        return Facing::unknown;
    }
    return right > left ? Facing::right : Facing::left;
}

double mirror_extent(const Case& record) {
    std::optional<double> least, greatest;
    for_each_point(record, [&](const Position& point, bool) {
        least = least ? std::min(*least, point.x) : point.x;
        greatest = greatest ? std::max(*greatest, point.x) : point.x;
    });
    return least.value_or(0) + greatest.value_or(0);
}

Case mirrored(Case record, double extent) {
    bool on_empty_point;
    do {
        on_empty_point = false;
        for_each_point(record, [&](const Position& point, bool is_landmark) {
            if (is_landmark && counts_as_absent({extent - point.x, point.y})) on_empty_point = true;
        });
        extent += on_empty_point;
    } while (on_empty_point);
    for_each_point(record, [&](Position& point, bool) { point.x = extent - point.x; });
    record.mirrored_about = extent;
    return record;
}

Case turned_right(Case record, bool mirror) {
    if (record.kind != Kind::lateral) return record;
    const Facing looks = facing(record);
    if (!mirror) {
        if (looks == Facing::left) {
            record.remarks.push_back({"looks_left",
                                      "The face looks left, so signs of angles and lengths are not to be trusted; "
                                      "--mirror measures it turned round."});
        }
        return record;
    }
    if (looks == Facing::right) {
        record.notes.emplace_back("the face looks right already, so it was not mirrored");
        return record;
    }
    record = mirrored(std::move(record), mirror_extent(record));
    record.remarks.push_back({"measured_mirrored", "Measured mirrored, as --mirror says."});
    if (!record.image.empty()) {
        record.image.clear();
        record.notes.emplace_back("the X-ray is not mirrored, so it is left out");
    }
    return record;
}

}  // namespace cephtool
