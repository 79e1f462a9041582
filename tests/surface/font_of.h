// A font for tests.
#pragma once

#include <algorithm>
#include <string_view>

#include "framework/drawing.h"

inline void make_font(CFont& font, int height, std::string_view face_932) {
    LOGFONTA description{};
    description.lfHeight = height;
    description.lfCharSet = SHIFTJIS_CHARSET;
    std::copy(face_932.begin(), face_932.end(), description.lfFaceName);
    font.CreateFontIndirectA(&description);
}
