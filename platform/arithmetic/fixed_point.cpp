#include "platform/arithmetic/fixed_point.h"

#include <algorithm>
#include <bit>
#include <span>

#include "platform/arithmetic/tables.h"

namespace tool {

FixedPoint::FixedPoint(int places, std::uint64_t mantissa, int exponent) : places_(places) {
    const int shift = 32 * places + exponent;  // of the mantissa's last bit from the last place's
    for (int bit = 0; bit < 64; ++bit)
        if (mantissa >> bit & 1 && shift + bit >= 0)
            words_[static_cast<std::size_t>((shift + bit) / 32)] |= std::uint32_t{1} << (shift + bit) % 32;
}

FixedPoint::FixedPoint(int places, std::uint32_t whole, const std::uint32_t* fraction) : FixedPoint(places, whole) {
    std::reverse_copy(fraction, fraction + places, words_.begin());
}

FixedPoint& FixedPoint::operator+=(const FixedPoint& other) {
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(places_); ++i) {
        carry += std::uint64_t{words_[i]} + other.words_[i];
        words_[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    return *this;
}

FixedPoint& FixedPoint::operator-=(const FixedPoint& other) {
    std::uint64_t carry = 1;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(places_); ++i) {
        carry += std::uint64_t{words_[i]} + std::uint32_t(~other.words_[i]);
        words_[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    return *this;
}

namespace {

// The words of a b, least significant first; `product` has as many as both together.
void multiply(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b, std::span<std::uint32_t> product) {
    std::ranges::fill(product, 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < b.size(); ++j) {
            carry += std::uint64_t{a[i]} * b[j] + product[i + j];
            product[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        product[i + b.size()] = static_cast<std::uint32_t>(carry);
    }
}

}  // namespace

FixedPoint& FixedPoint::operator*=(const FixedPoint& other) {
    std::array<std::uint32_t, 2 * most_places + 2> product;
    const std::size_t places = static_cast<std::size_t>(places_), size = places + 1;
    multiply({words_.data(), size}, {other.words_.data(), size}, std::span(product).first(2 * size));
    std::copy_n(product.begin() + places_, size, words_.begin());
    return *this;
}

FixedPoint& FixedPoint::operator*=(std::uint32_t factor) {
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(places_); ++i) {
        carry += std::uint64_t{words_[i]} * factor;
        words_[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    return *this;
}

FixedPoint& FixedPoint::operator/=(std::uint32_t divisor) {
    std::uint64_t rest = 0;
    for (std::size_t i = static_cast<std::size_t>(places_) + 1; i-- > 0;) {
        rest = rest << 32 | words_[i];
        words_[i] = static_cast<std::uint32_t>(rest / divisor);
        rest %= divisor;
    }
    return *this;
}

FixedPoint& FixedPoint::operator>>=(int bits) {
    for (; bits > 31; bits -= 31) *this /= std::uint32_t{1} << 31;
    return *this /= std::uint32_t{1} << bits;
}

std::optional<bool> FixedPoint::surely_positive() const {
    const FixedPoint doubt(places_, 1u << 16, -32 * places_);
    if (!(FixedPoint(*this) -= doubt).negative()) return true;
    if ((FixedPoint(*this) += doubt).negative()) return false;
    return {};
}

namespace {

// term (1 -/+ factor / divisor(1) + factor^2 / (divisor(1) divisor(2)) ...), until nothing is left of a term
template <class Divisor>
FixedPoint series(FixedPoint term, const FixedPoint& factor, bool alternating, Divisor divisor) {
    FixedPoint sum = term;
    for (std::uint32_t k = 1; !term.zero(); ++k) {
        term *= factor;
        term /= divisor(k);
        alternating&& k % 2 ? sum -= term : sum += term;
    }
    return sum;
}

FixedPoint square(FixedPoint x) {
    return x *= x;
}

}  // namespace

FixedPoint sine(const FixedPoint& x) {
    return series(x, square(x), true, [](std::uint32_t k) { return 2 * k * (2 * k + 1); });
}

FixedPoint cosine(const FixedPoint& x) {
    return series(FixedPoint(x.places(), 1), square(x), true, [](std::uint32_t k) { return (2 * k - 1) * (2 * k); });
}

FixedPoint exponential(const FixedPoint& x) {
    return series(FixedPoint(x.places(), 1), x, false, [](std::uint32_t k) { return k; });
}

QuarterTurns quarter_turns(double x, int places) {
    const auto [mantissa, exponent] = parts_of(x);
    // Word i of 2/pi has the bits 2^-32i-1 ... 2^-32i-32. Those before `first` give multiples of four quarter turns;
    // before word 0 there is nothing but zeros. Three words beyond the places keep what is cut off below one unit: the
    // mantissa has two words, and `shift` is 2 ... 33.
    const int shift = (exponent - 2) & 31, first = (exponent - 2 - shift) / 32;
    const std::size_t count = static_cast<std::size_t>(places) + 3;
    std::array<std::uint32_t, FixedPoint::most_places + 3> bits{};
    for (std::size_t i = 0; i < count; ++i)
        if (const int word = first + static_cast<int>(i); word >= 0) bits[count - 1 - i] = two_over_pi[word];
    const std::array factor{static_cast<std::uint32_t>(mantissa), static_cast<std::uint32_t>(mantissa >> 32)};
    std::array<std::uint32_t, FixedPoint::most_places + 5> product;
    multiply(factor, std::span(bits).first(count), std::span(product).first(count + 2));
    // The point stands shift + 2 bits below the top of word count - 1 ... of the product: bit `at` is the first behind
    // it.
    const auto word_behind = [&](int place) {  // the 32 bits behind the point that begin with 2^(-32 place - 1)
        const int low = 32 * static_cast<int>(count) - (shift + 2) - 32 * (place + 1);
        const std::size_t word = static_cast<std::size_t>(low / 32);
        const int bit = low % 32;
        return static_cast<std::uint32_t>((std::uint64_t{product[word + 1]} << 32 | product[word]) >> bit);
    };
    std::array<std::uint32_t, FixedPoint::most_places> fraction{};
    for (int i = 0; i < places; ++i) fraction[static_cast<std::size_t>(i)] = word_behind(i);
    return {word_behind(-1) & 3, FixedPoint(places, 0, fraction.data())};
}

Parts parts_of(double value) {
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(value), fraction = bits & 0xFFFFFFFFFFFFFu;
    const int exponent = static_cast<int>(bits >> 52);
    if (exponent == 0) return {fraction, -1074};
    return {fraction | std::uint64_t{1} << 52, exponent - 1075};
}

}  // namespace tool
