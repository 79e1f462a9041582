// Numbers with up to 512 bits behind the point, for what the fast approximations leave undecided.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace tool {

// A two's complement number of `places` words of 32 bits behind the point and one before it. Numbers that meet have as
// many places. What is cut off is cut toward minus infinity: a result is less than one unit of the last place too
// small.
class FixedPoint {
 public:
    static constexpr int most_places = 16;
    using Words = std::array<std::uint32_t, most_places + 1>;

    FixedPoint(int places, std::uint32_t whole) : places_(places) { words_[static_cast<std::size_t>(places)] = whole; }
    // mantissa 2^exponent, below 2^31
    FixedPoint(int places, std::uint64_t mantissa, int exponent);
    // The first words behind the point, most significant first.
    FixedPoint(int places, std::uint32_t whole, const std::uint32_t* fraction);

    int places() const { return places_; }
    // Place 0 is before the point, place 1 has the first 32 bits behind it.
    std::uint32_t operator[](int place) const { return words_[static_cast<std::size_t>(places_ - place)]; }
    bool negative() const { return (*this)[0] >> 31; }
    bool zero() const { return words_ == Words{}; }

    FixedPoint& operator+=(const FixedPoint& other);
    FixedPoint& operator-=(const FixedPoint& other);
    // These are for numbers of 0 or more.
    FixedPoint& operator*=(const FixedPoint& other);
    FixedPoint& operator*=(std::uint32_t factor);
    FixedPoint& operator/=(std::uint32_t divisor);
    FixedPoint& operator>>=(int bits);

    // Whether a number that is wrong by less than 2^16 units of the last place is above 0: if that tells.
    std::optional<bool> surely_positive() const;

 private:
    int places_;
    Words words_{};  // least significant first; those above the point are 0
};

// Of 0 <= x < 4. Fewer than 200 terms of a few units' error each, and what the first terms of an argument above 1 make
// of the error of x: well below 2^16 units.
FixedPoint sine(const FixedPoint& x);
FixedPoint cosine(const FixedPoint& x);
FixedPoint exponential(const FixedPoint& x);

// x 2/pi for a finite x > 0, after Payne and Hanek (1983): only the bits of 2/pi that matter are multiplied. Less than
// two units of the last place too small.
struct QuarterTurns {
    unsigned whole;  // modulo 4
    FixedPoint fraction;
};
QuarterTurns quarter_turns(double x, int places);

// A finite double above 0 is mantissa 2^exponent.
struct Parts {
    std::uint64_t mantissa;
    int exponent;
};
Parts parts_of(double value);

}  // namespace tool
