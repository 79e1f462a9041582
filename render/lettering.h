// Text on a surface: its font, colour and background. What the surface had is back afterwards. Text is code page 932.
#pragma once

#include <optional>
#include <string_view>

#include "framework/drawing.h"

namespace tool {

inline constexpr const char* gothic_face = "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E";  // ＭＳ ゴシック
inline constexpr const char* roman_face = "Times New Roman";

struct Lettering {
    std::optional<LOGFONTA> font;  // the surface's own when empty
    COLORREF color;
    int background_mode = TRANSPARENT;  // one that does not exist leaves the surface's
};

// An upright font of the Japanese character set; nothing for height 0.
std::optional<LOGFONTA> font_of(unsigned height, unsigned weight, bool italic, BYTE quality, std::string_view face);

// At the place that the surface's text alignment gives (x, y) its meaning for.
void draw_text(CDC& dc, CPoint at, std::string_view text, const Lettering& lettering);

// As CDC::DrawText; returns the text's height.
int draw_text(CDC& dc, const CRect& rect, std::string_view text, const Lettering& lettering, UINT format);

}  // namespace tool
