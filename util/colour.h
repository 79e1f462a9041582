// Colour arithmetic on red, green and blue; the top byte of a result is 0.
#pragma once

#include "framework/scalars.h"

namespace tool {

constexpr COLORREF inverted(COLORREF colour) {
    return ~colour & 0x00FFFFFFu;
}

// Each part less `amount`, not below 0; a negative amount brightens and a part above 255 keeps its low byte.
// Kept: black cannot get darker, so it gives a green that shows on black.
constexpr COLORREF darkened(COLORREF colour, int amount) {
    if (colour == 0) return RGB(50, 150, 50);
    const auto part = [amount](int value) {
        const long long less = static_cast<long long>(value) - amount;
        return less < 0 ? 0 : static_cast<int>(less & 0xFF);
    };
    return RGB(part(GetRValue(colour)), part(GetGValue(colour)), part(GetBValue(colour)));
}

}  // namespace tool
