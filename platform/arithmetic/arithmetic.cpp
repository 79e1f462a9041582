// Each function has a fast approximation with a proven bound of its error. Where both ends of what that leaves open
// round alike, this is the result (Ziv, Fast evaluation of elementary mathematical functions with correctly rounded
// last bit, 1991); otherwise, once in some thousand arguments, the middles between the doubles in question are compared
// with the exact value.
#include "platform/arithmetic.h"

#include "platform/arithmetic/approximation.h"
#include "platform/arithmetic/decision.h"

namespace tool {
namespace {

// The double of least ... most that is nearest to a value. above(middle) tells whether the value's size is above
// `middle`.
template <class Above>
double nearest_of(double least, double most, Above above) {
    const double sign = most < 0 ? -1 : 1;
    // The bits of doubles above 0 are in the order of their values.
    std::uint64_t first = std::bit_cast<std::uint64_t>(std::abs(sign < 0 ? most : least));
    std::uint64_t last = std::bit_cast<std::uint64_t>(std::abs(sign < 0 ? least : most));
    while (first < last) {
        const std::uint64_t middle = first + (last - first) / 2;
        const Parts below = parts_of(std::bit_cast<double>(middle));
        above(Parts{2 * below.mantissa + 1, below.exponent - 1}) ? first = middle + 1 : last = middle;
    }
    return sign * std::bit_cast<double>(first);
}

// The value times a power of two, which has to leave it in the range of normal doubles.
template <class Above>
double rounded(const Approximation& value, Above above, double factor = 1) {
    const double least = value.high + (value.low - value.error), most = value.high + (value.low + value.error);
    if (least == most) [[likely]]
        return least * factor;
    return nearest_of(least * factor, most * factor, above);
}

double power_of_two(int exponent) {  // -1022 ... 1023
    return std::bit_cast<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
}

// Results that are too large or too small for a normal double.
double exp_at_the_ends(double x, const ScaledApproximation& scaled) {
    const Approximation value = scaled.value;
    const int power = scaled.power;
    const auto above = [x](Parts middle) { return exp_above(x, middle); };
    if (power > 0) {
        const auto at = [&](double end) {
            return (value.high + (value.low + end)) * power_of_two(power - 100) * 0x1p100;
        };
        return nearest_of(at(-value.error), at(value.error), above);
    }
    // The last place of anchor + value is worth 2^-1074 once it has the factor.
    const double anchor = power_of_two(-1022 - power);
    const Split sum = arithmetic::ordered_sum(anchor, value.high);
    const double error = value.error + 0x1p-52 * std::abs(sum.low);
    const auto at = [&](double end) { return sum.high + (sum.low + (value.low + end)) - anchor; };
    const auto scaled_back = [power](double result) { return result * power_of_two(power + 100) * 0x1p-100; };
    const double least = at(-error), most = at(error);
    if (least == most) return scaled_back(least);
    return nearest_of(scaled_back(least), scaled_back(most), above);
}

}  // namespace

double acos(double x) {
    if (!(std::abs(x) < 1)) {
        if (x == -1) return 0x1.921fb54442d18p+1;
        return x == 1 ? 0 : (x - x) / (x - x);
    }
    return rounded(approximate_acos(x), [x](Parts middle) { return acos_above(x, middle); });
}

double atan(double x) {
    const double size = std::abs(x);
    if (!(size >= 0x1p-27 && size < 0x1p54)) {
        if (!(size >= 0x1p54)) return x;                // x^3 / 3 is less than 2^-54 x. NaN too.
        return std::copysign(0x1.921fb54442d18p+0, x);  // pi/2 is 0.28 of the last place above this
    }
    return std::copysign(rounded(approximate_atan(size), [size](Parts middle) { return atan_above(size, middle); }), x);
}

double sin(double x) {
    const double size = std::abs(x);
    if (size < 0x1p-26) return x;  // x^3 / 6 is less than 2^-54 x
    if (!(size <= std::numeric_limits<double>::max())) return x - x;
    return rounded(approximate_sin(x, 0), [x](Parts middle) { return sin_above(x, 0, middle); });
}

double cos(double x) {
    const double size = std::abs(x);
    if (size < 0x1p-27) return 1;  // x^2 / 2 is less than 2^-54
    if (!(size <= std::numeric_limits<double>::max())) return x - x;
    return rounded(approximate_sin(size, 1), [size](Parts middle) { return sin_above(size, 1, middle); });
}

double exp(double x) {
    if (!(std::abs(x) >= 0x1p-54 && std::abs(x) < 746)) {
        if (std::abs(x) < 1) return 1;
        if (x < 0) return 0;
        return x * std::numeric_limits<double>::infinity();  // NaN stays
    }
    const ScaledApproximation scaled = approximate_exp(x);
    constexpr double smallest_normal = -0x1.6232bdd7abcd2p+9;  // gives 2^-1022, a little more
    if (x < smallest_normal || scaled.power > 1023) return exp_at_the_ends(x, scaled);
    return rounded(
        scaled.value, [x](Parts middle) { return exp_above(x, middle); }, power_of_two(scaled.power));
}

LargeAngle reduced(double angle) {
    // 8 bits of the fraction of a quarter turn are the index; of the others 96, which are signed, make three doubles.
    const QuarterTurns turns = quarter_turns(angle, 4);
    const FixedPoint& f = turns.fraction;
    const auto bits_of = [&](int place) { return f[place] << 8 | f[place + 1] >> 24; };
    const std::uint32_t top = bits_of(1);
    const int up = static_cast<int>(top >> 31);
    const double high = static_cast<std::int32_t>(top) * 0x1p-32;
    const Split sum = arithmetic::ordered_sum(high, bits_of(2) * 0x1p-64);
    const double low = sum.low + bits_of(3) * 0x1p-96;
    // times pi/512
    const Split factor = arithmetic::split(sum.high);
    const Split product = arithmetic::ordered_sum(
        factor.high * pi_512.high, factor.high * pi_512.low + (factor.low + low) * (pi_512.high + pi_512.low));
    return {static_cast<int>(turns.whole * 256 + (f[1] >> 24)) + up, product};
}

}  // namespace tool
