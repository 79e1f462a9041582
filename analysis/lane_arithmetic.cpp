#include "analysis/lane_arithmetic.h"

#include <bit>
#include <limits>

#include "geometry/translation.h"
#include "platform/arithmetic.h"

namespace tool {
namespace {

// What is told of lanes are numbers, too, 1 or 0, so that loops have one width: "and" is a product, "not" 1 less it.
inline double is(bool condition) {
    return condition ? 1.0 : 0.0;
}

inline double apart(Vec2 p, Vec2 q) {
    const double x = std::abs(q.x - p.x), y = std::abs(q.y - p.y);
    return is((x > y ? x : y) > one_place_px);
}

inline void put(Vec2 made, LanePoints& points, std::size_t lane) {
    points.x[lane] = made.x;
    points.y[lane] = made.y;
}

// From a line to another: the products that its sine and cosine are made of.
struct Turn {
    double side, along, lengths;
    double plain;
};

// Plain where the unit vectors need not be looked at: the sine is above 2e-4, so no case of signed_angle's that stands
// apart is within.
inline Turn turn(Vec2 a, Vec2 b, Vec2 c, Vec2 d) {
    constexpr double clear_sine = 2e-4, longest = 1e26;
    const Vec2 u = b - a, v = d - c;
    const double uu = dot(u, u), vv = dot(v, v), lengths = std::sqrt(uu) * std::sqrt(vv);
    const double side = cross(u, v);
    const double plain =
        apart(a, b) * apart(c, d) * is(uu < longest) * is(vv < longest) * is(std::abs(side) > clear_sine * lengths);
    return {side, dot(u, v), lengths, plain};
}

TOOL_WIDE Lanes begin_angle_at(const LanePoints& a, const LanePoints& b, const LanePoints& c,
                               LaneNumbers& __restrict cosine) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Vec2 u = b[i] - a[i], v = c[i] - b[i];
        const double exact = dot(u, v) / (tool::length(u) * tool::length(v));
        const double below = exact < -1.0 ? -1.0 : exact;
        cosine[i] = 1.0 < below ? 1.0 : below;
        plain[i] = apart(a[i], b[i]) * apart(c[i], b[i]);
    }
    return lanes_but(plain);
}

TOOL_WIDE void end_angle_at(LaneNumbers& angle) {
    for (double& number : angle.of) number = 180.0 - formula_degrees(number);
}

TOOL_WIDE Lanes begin_signed_angle(const LanePoints& a, const LanePoints& b, const LanePoints& c, const LanePoints& d,
                                   LaneNumbers& __restrict cosine, LaneNumbers& __restrict side) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Turn turned = turn(a[i], b[i], c[i], d[i]);
        cosine[i] = turned.along / turned.lengths;
        side[i] = turned.side;
        plain[i] = turned.plain;
    }
    return lanes_but(plain);
}

TOOL_WIDE void end_signed_angle(const LaneNumbers& side, LaneNumbers& __restrict angle) {
    for (std::size_t i = 0; i < lane_count; ++i) angle[i] = formula_degrees(side[i] < 0 ? angle[i] : -angle[i]);
}

// As translated_along takes an angle of 0: the turn of the direction from straight right, in the quadrant where it is
// taken.
TOOL_WIDE Lanes begin_extension(const LanePoints& a, const LanePoints& b, const LaneNumbers& scale,
                                LaneNumbers& __restrict tangent) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Line line{a[i], b[i]};
        tangent[i] = quadrant_of(line).rise / (line.b.x - line.a.x);
        plain[i] = apart(line.a, line.b) * is(line.a.x != line.b.x) * is(scale[i] != 0);
    }
    return lanes_but(plain);
}

TOOL_WIDE void add(double number, LaneNumbers& to) {
    for (double& each : to.of) each = number + each;
}

TOOL_WIDE void end_extension(const LanePoints& a, const LanePoints& b, double mm, const LaneNumbers& scale,
                             const LaneNumbers& cosine, const LaneNumbers& sine, LanePoints& __restrict point) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Quadrant quadrant = quadrant_of({a[i], b[i]});
        put({b.x[i] + cosine[i] * mm / scale[i] * quadrant.sx, b.y[i] - sine[i] * mm / scale[i] * quadrant.sy}, point,
            i);
    }
}

template <class Combine>
inline void each(const LaneNumbers& left, const LaneNumbers& right, LaneNumbers& __restrict number,
                 const Combine& combine) {
    for (std::size_t i = 0; i < lane_count; ++i) number[i] = combine(left[i], right[i]);
}

}  // namespace

Lanes lanes_but(const LaneNumbers& told) {
    std::uint64_t all = ~std::uint64_t{0};
    for (const double is_told : told.of) all &= std::bit_cast<std::uint64_t>(is_told);
    Lanes lanes = 0;
    if (all == std::bit_cast<std::uint64_t>(1.0)) return lanes;
    for (std::size_t i = 0; i < lane_count; ++i) lanes |= static_cast<Lanes>(told[i] == 0) << i;
    return lanes;
}

TOOL_WIDE void middle(const LanePoints& a, const LanePoints& b, LanePoints& __restrict point) {
    for (std::size_t i = 0; i < lane_count; ++i) put({halfway(a.x[i], b.x[i]), halfway(a.y[i], b.y[i])}, point, i);
}

TOOL_WIDE Lanes foot(const LanePoints& p, const LanePoints& a, const LanePoints& b, LanePoints& __restrict point) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Line line{a[i], b[i]};
        put(foot_on_slope(p[i], line), point, i);
        plain[i] = is(line.a.x != line.b.x) * is(line.a.y != line.b.y) * apart(line.a, line.b);
    }
    return lanes_but(plain);
}

TOOL_WIDE Lanes crossing(const LanePoints& a, const LanePoints& b, const LanePoints& c, const LanePoints& d,
                         LanePoints& __restrict point) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Line ab{a[i], b[i]}, cd{c[i], d[i]};
        put(crossing_of_slopes(ab, cd), point, i);
        plain[i] = turn(a[i], b[i], c[i], d[i]).plain * is(ab.a.x != ab.b.x) * is(cd.a.x != cd.b.x) *
                   is(ab.slope() != cd.slope());
    }
    return lanes_but(plain);
}

Lanes extension(const LanePoints& a, const LanePoints& b, double mm, const LaneNumbers& scale, LanePoints& point) {
    LaneNumbers angle, cosine, sine;
    const Lanes told = begin_extension(a, b, scale, angle);
    atan(angle, angle);
    add(short_pi, angle);
    cos(angle, cosine);
    sin(angle, sine);
    end_extension(a, b, mm, scale, cosine, sine, point);
    return told;
}

TOOL_WIDE Lanes length(Measure measure, const LanePoints& a, const LanePoints& b, const LaneNumbers& scale,
                       LaneNumbers& __restrict length) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) {
        length[i] = tool::distance(a[i], b[i]) * scale[i];
        plain[i] = apart(a[i], b[i]);
    }
    if (measure == Measure::length_right)
        for (std::size_t i = 0; i < lane_count; ++i) length[i] = a.x[i] > b.x[i] ? -length[i] : length[i];
    if (measure == Measure::length_down)
        for (std::size_t i = 0; i < lane_count; ++i) length[i] = a.y[i] > b.y[i] ? -length[i] : length[i];
    return lanes_but(plain);
}

Lanes angle_at(const LanePoints& a, const LanePoints& b, const LanePoints& c, LaneNumbers& angle) {
    const Lanes told = begin_angle_at(a, b, c, angle);
    acos(angle, angle);
    end_angle_at(angle);
    return told;
}

Lanes signed_angle(const LanePoints& a, const LanePoints& b, const LanePoints& c, const LanePoints& d,
                   LaneNumbers& angle) {
    LaneNumbers side;
    const Lanes told = begin_signed_angle(a, b, c, d, angle, side);
    acos(angle, angle);
    end_signed_angle(side, angle);
    return told;
}

TOOL_WIDE Lanes sign_of_angle(const LanePoints& a, const LanePoints& b, const LanePoints& c, const LanePoints& d,
                              LaneNumbers& __restrict sign) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const Turn turned = turn(a[i], b[i], c[i], d[i]);
        sign[i] = turned.side < 0 ? 1.0 : -1.0;
        plain[i] = turned.plain;
    }
    return lanes_but(plain);
}

TOOL_WIDE void combined(Operation operation, const LaneNumbers& left, const LaneNumbers& right,
                        LaneNumbers& __restrict number) {
    switch (operation) {
        case Operation::times: return each(left, right, number, [](double l, double r) { return l * r; });
        case Operation::over: return each(left, right, number, [](double l, double r) { return l / r; });
        case Operation::plus: return each(left, right, number, [](double l, double r) { return l + r; });
        case Operation::minus: return each(left, right, number, [](double l, double r) { return l - r; });
        case Operation::less: return each(left, right, number, [](double l, double r) { return l < r ? 1.0 : 0.0; });
        case Operation::at_most:
            return each(left, right, number, [](double l, double r) { return l <= r ? 1.0 : 0.0; });
        case Operation::more: return each(left, right, number, [](double l, double r) { return l > r ? 1.0 : 0.0; });
        case Operation::at_least:
            return each(left, right, number, [](double l, double r) { return l >= r ? 1.0 : 0.0; });
        case Operation::equal: return each(left, right, number, [](double l, double r) { return l == r ? 1.0 : 0.0; });
    }
}

TOOL_WIDE void choose(const LaneNumbers& tested, int place, const LaneNumbers& number, LaneNumbers& __restrict chosen) {
    constexpr double below_1 = 1 - 0x1p-53;
    const double from = place == 0 ? -below_1 : place, to = place + 1.0;
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double taken = number[i], kept = chosen[i];
        chosen[i] = is(tested[i] >= from) * is(tested[i] < to) == 1 ? taken : kept;
    }
}

TOOL_WIDE void choose_not_zero(const LaneNumbers& tested, double place, LaneNumbers& __restrict chosen) {
    for (std::size_t i = 0; i < lane_count; ++i) chosen[i] = std::abs(tested[i]) >= 1 ? place : chosen[i];
}

namespace {

constexpr double shifter = 0x1.8p52;  // rounds to whole numbers

inline double step_nearest(double steps) {
    const double even = (steps + shifter) - shifter, left = steps - even;
    return left == std::copysign(0.5, steps) ? steps + left : even;
}

}  // namespace

TOOL_WIDE void take_placed(LanePoints& points, double farthest, LaneNumbers& __restrict within,
                           LaneNumbers& __restrict whole) {
    for (std::size_t i = 0; i < lane_count; ++i) {
        const double placed = is(points.x[i] == points.x[i]) * is(points.y[i] == points.y[i]);
        const double x = placed == 1 ? points.x[i] : 0, y = placed == 1 ? points.y[i] : 0;
        within[i] *= is(std::abs(x) <= farthest) * is(std::abs(y) <= farthest);
        whole[i] *= is((x + shifter) - shifter == x) * is((y + shifter) - shifter == y);
        put({x, y}, points, i);
    }
}

TOOL_WIDE void to_steps(LanePoints& points, const LaneNumbers& steps_a_pixel) {
    for (std::size_t i = 0; i < lane_count; ++i)
        put({step_nearest(points.x[i] * steps_a_pixel[i]), step_nearest(points.y[i] * steps_a_pixel[i])}, points, i);
}

TOOL_WIDE Lanes lanes_at_origin(const LanePoints& points) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i) plain[i] = 1 - is(points.x[i] == 0) * is(points.y[i] == 0);
    return lanes_but(plain);
}

TOOL_WIDE Lanes lanes_not_finite(const LaneNumbers& numbers) {
    LaneNumbers plain;
    for (std::size_t i = 0; i < lane_count; ++i)
        plain[i] = is(std::abs(numbers[i]) <= std::numeric_limits<double>::max());
    return lanes_but(plain);
}

}  // namespace tool
