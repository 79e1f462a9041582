// CTools: text on a surface.
#include "Tools.h"
#include "render/lettering.h"
#include "render/mapping.h"
#include "util/caller_text.h"

using tool::font_of, tool::or_empty;

namespace {

const char* face_name(int face) {
    return face == 9 ? tool::roman_face : tool::gothic_face;
}

void draw_text(CDC* dc, CPoint at, const char* text, const tool::Lettering& lettering) {
    if (dc) tool::draw_text(*dc, at, or_empty(text), lettering);
}

int draw_text(CDC* dc, const tagRECT& r, const char* text, const tool::Lettering& lettering, unsigned format) {
    return dc && text ? tool::draw_text(*dc, r, text, lettering, format) : 0;
}

}  // namespace

void CTools::TextMakeOut(CDC* dc, int x, int y, const char* text, unsigned int height, unsigned int weight, int,
                         int italic, COLORREF color, int bkMode) {
    draw_text(dc, {x, y}, text,
              {font_of(height, weight, italic != 0, PROOF_QUALITY, tool::gothic_face), color, bkMode});
}

void CTools::TextMake(CDC* dc, int x, int y, const char* text, unsigned int height, unsigned int weight, int face,
                      int italic, COLORREF color, int bkMode, int orientation, unsigned char strikeOut,
                      unsigned char underline) {
    auto font = font_of(height, weight, italic != 0, NONANTIALIASED_QUALITY, face_name(face));
    if (font) font->lfStrikeOut = strikeOut, font->lfUnderline = underline;
    const CPoint at(x, y);
    draw_text(dc, orientation == 1 ? tool::flipped(at) : at, text, {font, color, bkMode});
}

void CTools::P_Text(CDC* dc, int ox, int oy, double zx, double zy, int x, int y, const char* text, unsigned int height,
                    unsigned int weight, int face, int italic, COLORREF color) {
    const tool::Page page{{ox, oy}, zx, zy};
    draw_text(dc, page.device({x, y}), text,
              {font_of(height, weight, italic != 0, NONANTIALIASED_QUALITY, face_name(face)), color});
}

void CTools::Draw_Text(CDC* dc, CPoint p, double zoom, CPoint offset, const char* text, unsigned int height,
                       COLORREF color) {
    const tool::View view{zoom, offset};
    draw_text(dc, view.device(p), text,
              {font_of(height, FW_NORMAL, false, NONANTIALIASED_QUALITY, tool::gothic_face), color});
}

int CTools::Rect_Text(CDC* dc, tagRECT r, const char* text, const char* face, unsigned int height, unsigned int weight,
                      int italic, COLORREF color, unsigned int format) {
    const auto font = font_of(height, weight, italic != 0, NONANTIALIASED_QUALITY, face ? face : tool::gothic_face);
    return draw_text(dc, r, text, {font, color}, format);
}

int CTools::Rect_Text_LF(CDC* dc, tagRECT r, const char* text, const LOGFONTA* font, COLORREF color,
                         unsigned int format) {
    return draw_text(dc, r, text, {font ? std::optional(*font) : std::nullopt, color}, format);
}
