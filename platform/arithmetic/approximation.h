// Fast approximations of the correctly rounded functions: a sum of two doubles, and a bound of what it misses. Inline
// for arithmetic.cpp; a test compares them with their bounds.
//
// The first power of a reduced argument is multiplied exactly, and without fused multiply-add, which not every
// processor has: one factor is split into two doubles of 24 and 29 bits, and tables keep the first part of a value to
// 26 bits. What is left of a value, and the higher powers, are so small that plain doubles do: an operation on
// something of the size of t adds at most u t, where u is 2^-53. Bounds are relative to the result unless they say
// more.
#pragma once

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <type_traits>

#include "platform/arithmetic/tables.h"

// With wider intermediate results (32-bit code for the x87) no bound below holds: g++ wants -mfpmath=sse there.
static_assert(FLT_EVAL_METHOD == 0 && std::numeric_limits<double>::is_iec559);

namespace tool {

// The true value lies within `error` of high + low; |low| < 2^-16 |high|.
struct Approximation {
    double high, low, error;
};

namespace arithmetic {

// high has 24 bits; low, below 2^-24 of the value, is what is left. For |value| < 2^128; one below 2^-149 is all low.
inline Split split(double value) {
    const double high = static_cast<float>(value);
    return {high, value - high};
}

// a + b exactly, if |a| >= |b| or a is 0 (Dekker 1971).
inline Split ordered_sum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

// a + b exactly (Knuth).
inline Split exact_sum(double a, double b) {
    const double sum = a + b, part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

// The whole number nearest to a value below 2^31.
struct Whole {
    double value;
    int bits;
};
inline Whole nearest(double value) {
    constexpr double shifter = 0x1.8p52;
    const double shifted = value + shifter;
    return {shifted - shifter, static_cast<std::int32_t>(std::bit_cast<std::uint64_t>(shifted))};
}

}  // namespace arithmetic

// exp x = 2^(k/256) exp r, |r| < 2^-9.5. For 2^-54 <= |x| < 746.
struct ScaledApproximation {
    Approximation value;  // 0.99 ... 2
    int power;            // of 2, to multiply the value with
};
inline ScaledApproximation approximate_exp(double x) {
    using namespace arithmetic;
    const Whole k = nearest(x * per_ln2_256);
    // k < 2^18.2, so the first product is exact. The difference, too: a multiple of 2^-62 below 2^-9. The second
    // product is below 2^-24.9 and rounded by 2^-78; a third one would be below 2^-97 k < 2^-78.
    const double a = x - k.value * ln2_256_parts[0], b = k.value * ln2_256_parts[1];
    const double r = a - b;
    const Split first = split(a);
    const double second = first.low - b;  // rounded by 2^-77.8
    // exp r - 1 - r, below 2^-20: rounded by 5u of itself, for r and each step. r^7 / 5040 is below 2^-78.
    const double square = r * r;
    const double powers = square * (1 / 2. + r * (1 / 6. + r * (1 / 24. + r * (1 / 120. + r * (1 / 720.)))));
    // (t.high + t.low)(1 + first.high + second + powers). The product of the high parts is exact; t.low is below 2^-26.
    const Split t = exp2_table[k.bits & 255];
    const double rest = t.low + (t.low * first.high + (t.high + t.low) * (second + powers));
    const Split sum = ordered_sum(t.high, t.high * first.high);
    // Seven more roundings, with that of the test for rounding, of less than 2^-20. Together 12u 2^-20 + 2^-76 <
    // 2^-69.3.
    return {{sum.high, sum.low + rest, 0x1p-69 * sum.high}, k.bits >> 8};
}

// An angle above 0 as index pi/512 + rest, |rest| < 2^-8.3, modulo full turns. rest misses less than 2^-99 and 2^-75 of
// itself.
struct LargeAngle {
    int index;
    Split rest;
};
LargeAngle reduced(double angle);

// What the table has of t = index pi/512: its sine and cosine up to their signs, and these.
struct SineRow {
    Split s, c;
    double turn, sign;  // sin(pi/2 + y + r) = cos(y + r) turns the way of r
};
inline SineRow sine_row(int index) {
    const bool odd = index & 256, negative = index & 512;
    const auto place = static_cast<std::size_t>(index & 255);
    return {sine_table[odd ? 256 - place : place], sine_table[odd ? place : 256 - place], odd ? -1.0 : 1.0,
            negative ? -1.0 : 1.0};
}

// The sine of t + r, r = high + low with |r| < 2^-8.3, missing `error`.
inline Approximation sine_at(const SineRow& row, Split r, double error) {
    using namespace arithmetic;
    const auto& [s, c, turn, sign] = row;
    r = {turn * r.high, turn * r.low};
    const Split first = split(r.high);
    const double second = first.low + r.low;  // below 2^-24 r: rounded by 2^-77 r
    const double whole = r.high + r.low, square = whole * whole;
    // cos r - 1, below 2^-17.6: rounded by 5u of itself. sin r - r, below 2^-19.2 r: by 7u. r^8 / 40320 and r^9 /
    // 362880 are below 2^-81 and 2^-93.
    const double cosine_powers = square * (-1 / 2. + square * (1 / 24. - square * (1 / 720.)));
    const double sine_powers = whole * square * (-1 / 6. + square * (1 / 120. - square * (1 / 5040.)));
    // (s.high + s.low)(1 + cosine_powers) + (c.high + c.low)(first.high + second + sine_powers). The product of the
    // high parts is exact.
    const Split sum = ordered_sum(s.high, c.high * first.high);
    const double rest =
        s.low + (c.low * first.high + ((s.high + s.low) * cosine_powers + (c.high + c.low) * (sine_powers + second)));
    // In parts of s: the cosine's powers with their factor 7u 2^-17.6, the sine's 9u 2^-20.1, as c r < 0.52 s where s
    // is not 0; five more roundings, with that of the test, of less than 2^-17.4. Together 15u 2^-17.6 < 2^-66.6. The
    // result is more than 0.48 s: 2^-65.6. (Where s is 0 it is r, and there is less to round.)
    return {sign * sum.high, sign * (sum.low + rest), 0x1.8p-66 * std::abs(sum.high) + error};
}

// An angle of at most 16384 as index pi/512 + rest, which misses `error`.
inline constexpr double small_angle = 16384;
struct SmallAngle {
    int index;
    Split rest;
    double error;
};
inline SmallAngle reduced_small(double x) {
    using namespace arithmetic;
    const Whole k = nearest(x * per_pi_512);
    // k < 2^21.4, so two products are exact. The first difference is a multiple of 2^-61 below 2^-8.3, so exact too.
    // The third product is below 2^-72.8 k: rounded by 2^-125 k, as is the difference, apart from 2^-107 of itself. The
    // rest of pi is below 2^-126 k.
    const double a = x - k.value * pi_512_parts[0];
    const Split r = exact_sum(a, -(k.value * pi_512_parts[1]));
    const double low = r.low - k.value * pi_512_parts[2];
    return {k.bits, {r.high, low}, 0x1p-120 * std::abs(k.value)};
}

// sin(x + quarters pi/2), for 2^-27 <= |x|, finite.
inline Approximation approximate_sin(double x, int quarters) {
    if (std::abs(x) > small_angle) {
        const LargeAngle angle = reduced(std::abs(x));
        const int sign = x < 0 ? -1 : 1;
        return sine_at(sine_row(sign * angle.index + 256 * quarters), {sign * angle.rest.high, sign * angle.rest.low},
                       0x1p-99);
    }
    const SmallAngle angle = reduced_small(x);
    return sine_at(sine_row(angle.index + 256 * quarters), angle.rest, angle.error);
}

// c and its arctangent.
struct ArctangentRow {
    double c;
    Split arctangent;
};
// c is the number of 6 bits nearest to x; 0 below 2^-9 and infinite above 2^7.
inline ArctangentRow arctangent_row(double x) {
    constexpr int dropped = 47;  // bits of a double, to leave 6
    constexpr std::uint64_t first = std::bit_cast<std::uint64_t>(0x1p-9) >> dropped;
    constexpr std::uint64_t last = first + std::size(arctangent_table) - 1;
    const std::uint64_t place = (std::bit_cast<std::uint64_t>(x) + (std::uint64_t{1} << (dropped - 1))) >> dropped;
    if (place > last) return {std::numeric_limits<double>::infinity(), half_pi};
    if (place < first) return {0, {0, 0}};
    return {std::bit_cast<double>(place << dropped), arctangent_table[place - first]};
}

// atan x = atan c + atan q, q = (x - c)/(1 + x c), or -1/x where c is infinite. For 2^-27 <= x < 2^54.
inline Approximation approximate_atan(double x, const ArctangentRow& row) {
    using namespace arithmetic;
    const auto& [c, base] = row;
    const bool infinite = c > std::numeric_limits<double>::max();
    const Split factor = split(x);
    const Split one_and = exact_sum(1, c * factor.high);
    // Both products are exact; rounded by 2^-77.
    const Split finite = ordered_sum(one_and.high, one_and.low + c * factor.low);
    const double numerator = infinite ? -1 : x - c;  // exact, as c is within 2^-6 x of x (Sterbenz)
    const Split denominator{infinite ? x : finite.high, infinite ? 0 : finite.low};
    // q = quotient + second. The first product is exact, and the difference, which 24 bits of quotient and divisor
    // leave below 2^-22 of the numerator, too. second is below 2^-22 q, with an error of 6u of itself.
    const double inverse = 1 / denominator.high;
    const double quotient = split(numerator * inverse).high;
    const Split divisor = split(denominator.high);
    const double left = (numerator - quotient * divisor.high) - quotient * (divisor.low + denominator.low);
    const double second = left * inverse;
    // atan q - q: rounded by 7u of itself. Where c is 0, q is x, and that is 2^-19.5. Elsewhere q < 2^-6 c and q <
    // 2^-7, so it is less than 2^-22. q^11 / 11 is below 2^-80.
    const double q = quotient + second, square = q * q;
    const double powers = q * square * (-1 / 3. + square * (1 / 5. - square * (1 / 7. - square * (1 / 9.))));
    // Four more roundings, with that of the test, of less than 2^-19.5. Together 11u 2^-19.5 < 2^-69.
    const Split sum = ordered_sum(base.high, quotient);
    return {sum.high, sum.low + (base.low + (second + powers)), 0x1p-68 * sum.high};
}

inline Approximation approximate_atan(double x) {
    return approximate_atan(x, arctangent_row(x));
}

using ArcsineRow = std::remove_cvref_t<decltype(arcsine_table[0])>;
namespace arithmetic {
inline constexpr double steep_from = 0.7071;  // u is s: near 1 the angle is as s is. w is exact then.

// Of c: |u - c| < 2^-8 or, where s is not waited for, 2^-7.2; and c is 0 up to 2^-8. For |x| < 1.
inline int arcsine_row(double x) {
    constexpr int first_place = std::bit_cast<std::uint64_t>(0x1p-18) >> 46;
    const double a = std::abs(x), w = 1 - a;
    if (!(a > steep_from)) return nearest(128 * a).bits;
    const int place = static_cast<int>(std::bit_cast<std::uint64_t>(w) >> 46) - first_place;
    return place < 0 ? 0 : arcsine_places[place];
}
}  // namespace arithmetic

// With u the smaller one of |x| and s = sqrt(1 - x^2), v the larger one, and c = i/128 near u:
// asin u = asin c + asin z, z = u sqrt(1 - c^2) - v c; and acos x = pi/2 - asin x, or asin s, or pi - asin s. `row`
// has c. For |x| < 1.
inline Approximation approximate_acos(double x, const ArcsineRow& row) {
    using namespace arithmetic;
    const double a = std::abs(x), w = 1 - a;
    const bool steep = a > steep_from;
    const auto& [c, arcsine, cosine] = row;
    // s is wrong by less than 2.5u, for the steep ones 1.8u: w, 1 + a, the product, half of them, and the root.
    const double s = std::sqrt(w * (1 + a));
    const Split parts = split(a), root = split(s), u = steep ? root : parts, v = steep ? parts : root;
    // z = first + rest, apart from the error of s. The two products are exact: 24 bits times 26 or 7. Their difference,
    // too: c is 0 or both are multiples of 2^-57 and less than 2^-6 apart. rest is below 2^-23 u: rounded by 2^-75 u.
    const double first = u.high * cosine.high - v.high * c;
    const double rest = (u.low * cosine.high - v.low * c) + (steep ? s : a) * cosine.low;
    // asin z - z, below 2^-18.5 of the result: rounded by 7u. |z| < 2^-7.5, the steep ones 2^-6.7; z^11 63/2816 is
    // below 2^-79. That z has the error of s adds z^2/2 times that: near u = 0.7 it is 0.9u 2^-14.4 < 2^-67.5 (less
    // steep: 1.3u 2^-16), near 2^-8 it is 1.8u 2^-17 = 5.4u 2^-18.6.
    const double z = first + rest, square = z * z;
    const double powers =
        z * square * ((1 / 6. + square * (3 / 40.)) + square * square * (5 / 112. + square * (35 / 1152.)));
    // 1 - x^2, or 2w - w^2, as a sum: the square's high part is exact, its rest below 2^-22 of the whole and rounded by
    // 2^-74.
    const double leg = steep ? w : a;
    const Split base = split(leg);
    const Split whole = ordered_sum(steep ? 2 * w : 1.0, -(base.high * base.high));
    const double rest_of_square = whole.low - base.low * (base.high + leg);
    // The true s = root.high + low, from (root.high + low)^2 = the sum. The difference is exact. low is below 2^-24 s,
    // with an error of 2^-74 s.
    const double low = ((whole.high - root.high * root.high) + rest_of_square) / (root.high + s);
    const double correction = (low - root.low) * (steep ? cosine.high : -c);
    // multiple pi/2 + sign asin u: the high parts are multiples of 2^-33, so their sum is exact; it is 0 or larger than
    // z.
    const double side = std::copysign(1.0, x), multiple = steep ? 1 - side : 1, sign = steep ? side : -side;
    const Split sum = ordered_sum(multiple * half_pi.high + sign * arcsine.high, sign * first);
    const double lows = multiple * half_pi.low + sign * (((arcsine.low + rest) + powers) + correction);
    // Five more roundings, with that of the test, of less than 2^-18.5. Together 18u 2^-18.5 + 2^-74 < 2^-67.2.
    return {sum.high, sum.low + lows, 0x1p-67 * sum.high};
}

inline Approximation approximate_acos(double x) {
    return approximate_acos(x, arcsine_table[arithmetic::arcsine_row(x)]);
}

}  // namespace tool
