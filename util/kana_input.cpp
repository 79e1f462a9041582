#include "util/kana_input.h"

#include <iterator>

namespace tool {

CString reading(const CInputMethod& method, int kind) {
    const DWORD form = kind == 0   ? LCMAP_HIRAGANA | LCMAP_FULLWIDTH
                       : kind == 1 ? LCMAP_KATAKANA | LCMAP_FULLWIDTH
                                   : LCMAP_KATAKANA | LCMAP_HALFWIDTH;
    return MapKana(method.GetReading(), form);
}

DWORD conversion_bits(UINT mode) {
    constexpr DWORD half_width_katakana = IME_CMODE_NATIVE | IME_CMODE_KATAKANA;
    constexpr DWORD bits[] = {
        IME_CMODE_NATIVE | IME_CMODE_FULLSHAPE,                       // hiragana
        IME_CMODE_NATIVE | IME_CMODE_KATAKANA | IME_CMODE_FULLSHAPE,  // katakana
        half_width_katakana,
        IME_CMODE_FULLSHAPE,     // full-width alphanumerics
        IME_CMODE_ALPHANUMERIC,  // half-width alphanumerics
        half_width_katakana,
    };
    return mode < std::size(bits) ? bits[mode] : IME_CMODE_ALPHANUMERIC;
}

void set_input(CInputMethod& method, int open, UINT mode) {
    method.SetOpenStatus(open);
    if (open == 1) method.SetConversion((method.GetConversion() & IME_CMODE_ROMAN) | conversion_bits(mode));
}

}  // namespace tool
