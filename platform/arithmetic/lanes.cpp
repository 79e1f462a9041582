#include "platform/arithmetic.h"
#include "platform/arithmetic/approximation.h"

namespace tool {
namespace {

// What approximate_acos takes, for each lane.
struct LaneRows {
    LaneNumbers c, arcsine, arcsine_low, cosine, cosine_low;
};

// The cosines inside the domain, 0 for others, and their places in the table.
TOOL_WIDE void place_cosines(const LaneNumbers& cosines, LaneNumbers& __restrict inside,
                             std::int64_t* __restrict rows) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double x = std::abs(cosines[i]) < 1 ? cosines[i] : 0, a = std::abs(x);
        // As arcsine_row, but with s itself: so many roots at a time take no longer than the table.
        const double u = a > arithmetic::steep_from ? std::sqrt((1 - a) * (1 + a)) : a;
        inside[i] = x;
        rows[i] = std::bit_cast<std::int64_t>(128 * u + 0x1.8p52) & 127;
    }
}

// Angles that are decided, else NaN.
TOOL_WIDE void decide_acos(const LaneNumbers& cosines, const LaneRows& rows, LaneNumbers& __restrict angles) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Approximation value = approximate_acos(
            cosines[i], {rows.c[i], {rows.arcsine[i], rows.arcsine_low[i]}, {rows.cosine[i], rows.cosine_low[i]}});
        const double least = value.high + (value.low - value.error), most = value.high + (value.low + value.error);
        angles[i] = least == most ? least : std::numeric_limits<double>::quiet_NaN();
    }
}

}  // namespace

void acos(const LaneNumbers& cosines, LaneNumbers& angles) {
    LaneNumbers inside, decided;
    std::int64_t places[lane_count];
    LaneRows rows;
    place_cosines(cosines, inside, places);
    for (std::size_t i = 0; i < lane_count; ++i) {
        const ArcsineRow& row = arcsine_table[places[i]];
        rows.c[i] = row.c;
        rows.arcsine[i] = row.arcsine.high, rows.arcsine_low[i] = row.arcsine.low;
        rows.cosine[i] = row.cosine.high, rows.cosine_low[i] = row.cosine.low;
    }
    decide_acos(inside, rows, decided);
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double x = cosines[i];
        if (decided[i] == decided[i] && inside[i] == x) [[likely]]
            angles[i] = decided[i];
        else
            angles[i] = acos(x);
    }
}

}  // namespace tool
