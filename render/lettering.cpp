#include "render/lettering.h"

#include <algorithm>
#include <limits>

#include "platform/framework/caller_buffer.h"
#include "render/put_back.h"

namespace tool {

namespace {

LONG bounded(std::size_t value) {
    return static_cast<LONG>(std::min<std::size_t>(value, std::numeric_limits<LONG>::max()));
}

template <class Draw>
auto lettered(CDC& dc, const Lettering& lettering, Draw draw) {
    const BackgroundMode background(dc, lettering.background_mode);
    const TextColour colour(dc, lettering.color);
    if (!lettering.font) return draw();
    CFont font;
    font.CreateFontIndirectA(&*lettering.font);
    const Selected font_in_use(dc, font);
    return draw();
}

}  // namespace

std::optional<LOGFONTA> font_of(unsigned height, unsigned weight, bool italic, BYTE quality, std::string_view face) {
    if (height == 0) return std::nullopt;
    LOGFONTA font = {};
    font.lfHeight = bounded(height);
    font.lfWeight = bounded(weight);
    font.lfItalic = italic;
    font.lfCharSet = SHIFTJIS_CHARSET;
    font.lfQuality = quality;
    copy_cut(face, font.lfFaceName, sizeof font.lfFaceName);
    return font;
}

void draw_text(CDC& dc, CPoint at, std::string_view text, const Lettering& lettering) {
    lettered(dc, lettering, [&] { dc.TextOut(at.x, at.y, text.data(), bounded(text.size())); });
}

int draw_text(CDC& dc, const CRect& rect, std::string_view text, const Lettering& lettering, UINT format) {
    CRect room = rect;
    return lettered(dc, lettering, [&] { return dc.DrawText(text.data(), bounded(text.size()), &room, format); });
}

}  // namespace tool
