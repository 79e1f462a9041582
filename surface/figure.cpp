#include "surface/figure.h"

namespace tool {

std::optional<Blend> blend_of(int rop, COLORREF color) {
    constexpr COLORREF black = RGB(0, 0, 0), white = RGB(255, 255, 255);
    switch (rop) {
        case R2_BLACK: return Blend{black, false};
        case R2_WHITE: return Blend{white, false};
        case R2_NOP: return std::nullopt;
        case R2_NOT: return Blend{white, true};
        case R2_NOTCOPYPEN: return Blend{color ^ white, false};
        case R2_XORPEN: return Blend{color, true};
        default: return Blend{color, false};
    }
}

}  // namespace tool
