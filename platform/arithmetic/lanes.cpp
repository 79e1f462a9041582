// Each function takes the arguments that lie inside the domain of its approximation, a harmless one in place of others;
// lays what the table has of them side by side; and computes the approximations of all lanes. The lanes that are left
// are the function's by itself.
#include "platform/arithmetic.h"
#include "platform/arithmetic/approximation.h"

namespace tool {
namespace {

struct LaneSplits {
    LaneNumbers high, low;

    Split operator[](std::size_t lane) const { return {high[lane], low[lane]}; }
    void put(std::size_t lane, Split split) {
        high[lane] = split.high;
        low[lane] = split.low;
    }
};

// The result, NaN where the approximation leaves it open.
inline double decided(const Approximation& value) {
    const double least = value.high + (value.low - value.error), most = value.high + (value.low + value.error);
    return least == most ? least : std::numeric_limits<double>::quiet_NaN();
}

template <class Function>
void settle(const LaneNumbers& arguments, const LaneNumbers& inside, const LaneNumbers& found, LaneNumbers& results,
            const Function& by_itself) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double x = arguments[i];
        if (found[i] == found[i] && inside[i] == x) [[likely]]
            results[i] = found[i];
        else
            results[i] = by_itself(x);
    }
}

struct ArcsineRows {
    LaneNumbers c;
    LaneSplits arcsine, cosine;
};

TOOL_WIDE void place_cosines(const LaneNumbers& cosines, LaneNumbers& __restrict inside,
                             std::int64_t* __restrict places) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double x = std::abs(cosines[i]) < 1 ? cosines[i] : 0, a = std::abs(x);
        // As arcsine_row, but with s itself: so many roots at a time take no longer than the table.
        const double u = a > arithmetic::steep_from ? std::sqrt((1 - a) * (1 + a)) : a;
        inside[i] = x;
        places[i] = std::bit_cast<std::int64_t>(128 * u + 0x1.8p52) & 127;
    }
}

TOOL_WIDE void decide_acos(const LaneNumbers& inside, const ArcsineRows& rows, LaneNumbers& __restrict found) {
    for (std::size_t i = 0; i < lane_count; ++i)
        found[i] = decided(approximate_acos(inside[i], {rows.c[i], rows.arcsine[i], rows.cosine[i]}));
}

struct ArctangentRows {
    LaneNumbers c;
    LaneSplits arctangent;
};

TOOL_WIDE void decide_atan(const LaneNumbers& inside, const ArctangentRows& rows, LaneNumbers& __restrict found) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double size = std::abs(inside[i]);
        found[i] = std::copysign(decided(approximate_atan(size, {rows.c[i], rows.arctangent[i]})), inside[i]);
    }
}

struct SineRows {
    LaneSplits s, c;
    LaneNumbers turn, sign;
};
struct LaneAngles {
    std::int32_t index[lane_count];
    LaneSplits rest;
    LaneNumbers error;
};

TOOL_WIDE void reduce(const LaneNumbers& angles, LaneNumbers& __restrict inside, LaneAngles& __restrict reduced) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double size = std::abs(angles[i]), small = size <= small_angle ? angles[i] : 1;
        inside[i] = size >= 0x1p-26 ? small : 1;
        const SmallAngle angle = reduced_small(inside[i]);
        reduced.index[i] = angle.index;
        reduced.rest.high[i] = angle.rest.high;
        reduced.rest.low[i] = angle.rest.low;
        reduced.error[i] = angle.error;
    }
}

TOOL_WIDE void decide_sine(const SineRows& rows, const LaneAngles& angles, LaneNumbers& __restrict found) {
    for (std::size_t i = 0; i < lane_count; ++i)
        found[i] =
            decided(sine_at({rows.s[i], rows.c[i], rows.turn[i], rows.sign[i]}, angles.rest[i], angles.error[i]));
}

// sin(angle + quarters pi/2)
template <class Function>
void sine(const LaneNumbers& angles, int quarters, LaneNumbers& results, const Function& by_itself) {
    LaneNumbers inside, found;
    LaneAngles reduced;
    SineRows rows;
    reduce(angles, inside, reduced);
    for (std::size_t i = 0; i < lane_count; ++i) {
        const SineRow row = sine_row(reduced.index[i] + 256 * quarters);
        rows.s.put(i, row.s);
        rows.c.put(i, row.c);
        rows.turn[i] = row.turn;
        rows.sign[i] = row.sign;
    }
    decide_sine(rows, reduced, found);
    settle(angles, inside, found, results, by_itself);
}

}  // namespace

void acos(const LaneNumbers& cosines, LaneNumbers& angles) {
    LaneNumbers inside, found;
    std::int64_t places[lane_count];
    ArcsineRows rows;
    place_cosines(cosines, inside, places);
    for (std::size_t i = 0; i < lane_count; ++i) {
        const ArcsineRow& row = arcsine_table[places[i]];
        rows.c[i] = row.c;
        rows.arcsine.put(i, row.arcsine);
        rows.cosine.put(i, row.cosine);
    }
    decide_acos(inside, rows, found);
    settle(cosines, inside, found, angles, [](double x) { return acos(x); });
}

void atan(const LaneNumbers& tangents, LaneNumbers& angles) {
    LaneNumbers inside, found;
    ArctangentRows rows;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double size = std::abs(tangents[i]);
        inside[i] = size >= 0x1p-27 && size < 0x1p54 ? tangents[i] : 1;
        const ArctangentRow row = arctangent_row(std::abs(inside[i]));
        rows.c[i] = row.c;
        rows.arctangent.put(i, row.arctangent);
    }
    decide_atan(inside, rows, found);
    settle(tangents, inside, found, angles, [](double x) { return atan(x); });
}

void sin(const LaneNumbers& angles, LaneNumbers& sines) {
    sine(angles, 0, sines, [](double x) { return sin(x); });
}

void cos(const LaneNumbers& angles, LaneNumbers& cosines) {
    sine(angles, 1, cosines, [](double x) { return cos(x); });
}

}  // namespace tool
