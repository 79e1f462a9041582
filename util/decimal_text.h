// Numbers as the interface writes and recognises them: plain decimals with at most six places.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// Fixed-point text with at least `decimals` and at most six places; trailing zeros beyond `decimals` go, the point
// stays. The integer part is cut to 32 bits. NaN gives "0", infinity the largest integer without a point.
std::string fixed_text(double value, int decimals);

// True when the text, without trailing white space, is what the number it reads as prints as with six places, cut to
// the text's length. So "12", "12.", "-0" are numbers; "+1", "012", ".5", "1e3", " 1" and 12.5000001 are not, nor
// are integers that a double cannot hold. An empty or blank text counts as a number: fields may be left open.
bool is_number(std::string_view text);

}  // namespace tool
