// The Japanese input method of a window: the reading it keeps and the mode it types in.
#pragma once

#include "framework/input_method.h"

namespace tool {

// The reading of the last confirmed text. Kind 0: full-width hiragana, 1: full-width katakana, else half-width
// katakana.
CString reading(const CInputMethod& method, int kind);

// The conversion bits of typing mode 0 to 5 (2 and 5 are the same); none, half-width alphanumerics, for any other.
DWORD conversion_bits(UINT mode);

// Sets the open status; when it is 1 also the mode. Roman or kana typing and the sentence mode stay.
void set_input(CInputMethod& method, int open, UINT mode);

}  // namespace tool
