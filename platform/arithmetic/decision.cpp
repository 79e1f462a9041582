#include "platform/arithmetic/decision.h"

#include <cmath>

#include "platform/arithmetic/tables.h"

namespace tool {
namespace {

// The sign of a number that can be had to any number of places.
template <class Number>
bool positive(Number number) {
    for (int places = 4; places <= FixedPoint::most_places; places *= 2)
        if (const auto sure = number(places).surely_positive()) return *sure;
    return false;
}

FixedPoint number(int places, Parts parts) {
    return FixedPoint(places, parts.mantissa, parts.exponent);
}

FixedPoint magnitude(int places, double x) {
    return number(places, parts_of(std::abs(x)));
}

}  // namespace

// The cosine falls from 0 to pi.
bool acos_above(double x, Parts middle) {
    return positive([&](int places) {
        FixedPoint difference = cosine(number(places, middle));
        return x < 0 ? difference += magnitude(places, x) : difference -= magnitude(places, x);
    });
}

// x > sin m / cos m, both sides times cos m, and the larger ones halved until x is 1 ... 2
bool atan_above(double x, Parts middle) {
    const Parts parts = parts_of(x);
    const int halvings = parts.exponent + 52;
    return positive([&](int places) {
        FixedPoint left = cosine(number(places, middle)), right = sine(number(places, middle));
        if (left.negative()) return left;  // a middle above pi/2
        left *= FixedPoint(places, parts.mantissa, -52);
        halvings > 0 ? right >>= halvings : left >>= -halvings;
        return left -= right;
    });
}

bool sin_above(double x, unsigned quarters, Parts middle) {
    return positive([&](int places) {
        auto [whole, angle] = quarter_turns(std::abs(x), places);
        angle *= FixedPoint(places, 1, half_pi_words);
        return ((whole + quarters) % 2 ? cosine(angle) : sine(angle)) -= number(places, middle);
    });
}

// exp x = 2^k exp(x - k ln 2), where k is as large as leaves the remainder above 0 for certain
bool exp_above(double x, Parts middle) {
    const int k = static_cast<int>(std::floor(x * per_ln2_256 / 256 - 0x1p-20));
    return positive([&](int places) {
        FixedPoint remainder(places, 0), powers(places, 0, ln2_words);
        powers *= static_cast<std::uint32_t>(std::abs(k));
        x < 0 ? remainder -= magnitude(places, x) : remainder += magnitude(places, x);
        k < 0 ? remainder += powers : remainder -= powers;
        return exponential(remainder) -= number(places, {middle.mantissa, middle.exponent - k});
    });
}

}  // namespace tool
