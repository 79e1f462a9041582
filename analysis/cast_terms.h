// Measures of a cast that a token spells out over its teeth and contact points, such as "[12+11+21+22]": sums of terms.
//
//   term     what, in mm
//   11       crown width of a tooth by FDI number, 16 to 26 and 46 to 36
//   A-B-C    the straight way from place to place
//   A~B~C    a thin wire laid over the places: the natural cubic spline over the chords between them (Schoenberg and
//            Greville 1964; the bent beam of least energy for small slopes), which ends straight
//   A^B-C    how far A lies from the line through B and C
//   12|11    the gap between neighbours along the line of their middles: negative where they overlap
//   place    16m, UCF and so on: a point of the record; 16: the middle of a tooth's two contact points; 16/15: the
//            contact of neighbours, the middle between the points at which they face one another
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "Records.h"
#include "geometry/vec2.h"

namespace tool {

// The middle of the points in two slots (cast_points.h), which may be the same.
struct CastPlace {
    int slot, other;
};

struct CastTerm {
    enum class Kind { way, wire, height, gap };
    Kind kind;
    std::vector<CastPlace> places;  // of a gap the facing points of both teeth, then the teeth's middles
};

// The terms of a token with its brackets; nothing when it is none, such as a name.
std::optional<std::vector<CastTerm>> cast_terms(std::string_view token);

// In pixels. Undefined unless all points are placed.
double measured_term(const CastTerm& term, tagPOINTMO& record);

// What is measured, to be drawn: lines from point to point, a wire as short ones. Of a place the middle of its points.
using CastLine = std::array<Vec2, 2>;
std::vector<CastLine> lines_of_term(const CastTerm& term, tagPOINTMO& record);

}  // namespace tool
