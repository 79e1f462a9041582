// A surface without pixels: it writes down each operation as one line of text, for tests and for looking into what a
// host draws. A line is a command and its arguments; colours are RRGGBB, pen styles hexadecimal, texts UTF-8.
//
//   pen STYLE WIDTH COLOUR | extpen STYLE WIDTH COLOUR | brush COLOUR|null
//   font HEIGHT WEIGHT ITALIC UNDERLINE STRIKEOUT CHARSET QUALITY "FACE"
//   rop N | bkmode N | textcolor COLOUR | textalign N
//   move X Y | line X Y | polyline X Y X Y... | polygon X Y X Y...
//   rect L T R B | ellipse L T R B | arc L T R B SX SY EX EY
//   fillrgn COLOUR MODE X Y X Y... | fillrect COLOUR L T R B | framerect COLOUR L T R B | text X Y "TEXT"
#pragma once

#include <string>

#include "framework/drawing.h"

namespace tool {

class RecordingSurface : public CDC {
 public:
    const std::string& text() const { return text_; }
    void clear() { text_.clear(); }

    // The device that it plays: a printer's map mode and capabilities. A capability that is not named here is 0.
    void set_map_mode(int mode) { map_mode_ = mode; }
    void set_size(int width_px, int height_px, int width_mm, int height_mm);

    CPen* SelectObject(CPen* pen) override;
    CBrush* SelectObject(CBrush* brush) override;
    CFont* SelectObject(CFont* font) override;
    int SetROP2(int mode) override;
    int SetBkMode(int mode) override;
    COLORREF SetTextColor(COLORREF color) override;
    UINT SetTextAlign(UINT align) override;
    CPoint MoveTo(int x, int y) override;

    int GetMapMode() const override { return map_mode_; }
    int GetDeviceCaps(int index) const override;

    BOOL LineTo(int x, int y) override;
    BOOL Polyline(const POINT* points, int count) override;
    BOOL Polygon(const POINT* points, int count) override;
    BOOL Rectangle(int left, int top, int right, int bottom) override;
    BOOL Ellipse(int left, int top, int right, int bottom) override;
    BOOL Arc(int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) override;
    BOOL FillRgn(CRgn* region, CBrush* brush) override;
    void FillRect(const RECT* rect, CBrush* brush) override;
    void FrameRect(const RECT* rect, CBrush* brush) override;
    BOOL TextOut(int x, int y, LPCSTR text, int count) override;

 private:
    template <class... Words>
    void write(const char* command, const Words&... words);

    std::string text_;
    int map_mode_ = MM_TEXT;
    CSize size_px_, size_mm_;
};

}  // namespace tool
