#include "cases/case_record.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace cephtool {
namespace {

constexpr int fine_steps = 64;

}  // namespace

bool counts_as_absent(Position position) {
    if (std::abs(position.x) >= 1 || std::abs(position.y) >= 1) return false;
    const CPoint point = fine_point(position);
    return point.x == 0 && point.y == 0;
}

// Coordinates are bounded by the readers: a million pixels, 64 million steps.
CPoint fine_point(Position position) {
    return {static_cast<int>(std::lround(position.x * fine_steps)),
            static_cast<int>(std::lround(position.y * fine_steps))};
}

bool is_scale(double mm_per_pixel) {
    constexpr double finest = 1e-6, coarsest = 1e6;  // no picture of a head comes near; beyond, pages have no size
    return mm_per_pixel >= finest && mm_per_pixel <= coarsest;
}

tool::Subject subject_of(const Case& record) {
    tool::Subject subject{.mm_per_pixel = record.mm_per_pixel.value(), .palate = record.palate};
    subject.landmarks.reserve(record.landmarks.size() + record.user.size() + record.vertebrae.size());
    const auto add = [&](std::span<const Landmark> landmarks) {
        for (const Landmark& landmark : landmarks) {
            tool::PlacedLandmark& placed = subject.landmarks.emplace_back();
            placed.at = {landmark.position.x, landmark.position.y};
            placed.slot = landmark.slot;
            if (landmark.slot < 0) placed.name = landmark.name;
        }
    };
    add(record.landmarks);
    add(record.user);
    // The engine's record has no places for points of vertebrae: formulas find them behind a person's own landmarks,
    // as far as these leave room.
    const std::size_t room = USER_POINT_MAX - std::min<std::size_t>(record.user.size(), USER_POINT_MAX);
    add(std::span(record.vertebrae).first(std::min(record.vertebrae.size(), room)));
    for (const VirtualLandmark& made : record.virtuals) subject.virtuals.push_back({made.name, made.construction});
    if (record.sex) subject.sex = static_cast<tool::Sex>(*record.sex);
    return subject;
}

// The readers made sure that names fit and have their place in the code page.
CaseRecord::CaseRecord(const Case& record)
    : record_(*tool::SubjectRecord::of(static_cast<tool::Kind>(record.kind), subject_of(record))) {}

SheetSubject CaseRecord::subject(int sex, int band) {
    return record_.subject(static_cast<tool::Sex>(sex), band);
}

}  // namespace cephtool
