// Landmarks of formats that give no more than a name and a place: which kind of case they make, and which sort of
// landmark each is.
#pragma once

#include <span>

#include "cases/case_builder.h"

namespace cephtool {

struct NamedPoint {
    std::string name;
    Position position;
    std::size_t at = 0;  // byte of the source at which its name stands
};

// The kind whose table knows most of the names. Throws an Error when none knows any.
Kind kind_of(std::span<const NamedPoint> points, const Source& source);

// Adds the points in the builder's kind, by their names when it knows of none: landmarks of its table, points of
// vertebrae, and as the person's own what has a fitting name. Points named aux and two digits are left out with a note.
void add_points(CaseBuilder& builder, std::span<const NamedPoint> points, const Source& source);

// Whether add_points takes the name for something else than a landmark of the person's own.
bool is_reserved(const std::string& name, Kind kind);

// A case's landmarks, vertebra points and own landmarks, in this order.
std::vector<Landmark> all_landmarks(const Case& record);

}  // namespace cephtool
