#include "render/area.h"

#include <algorithm>
#include <limits>

#include "render/put_back.h"

namespace tool {

namespace {

CRect ordered(const CRect& r) {
    return {std::min(r.left, r.right), std::min(r.top, r.bottom), std::max(r.left, r.right), std::max(r.top, r.bottom)};
}

void widen_if_empty(LONG& low, LONG& high) {
    if (low != high) return;
    if (low > std::numeric_limits<LONG>::min()) --low;
    if (high < std::numeric_limits<LONG>::max()) ++high;
}

}  // namespace

void fill_rectangle(CDC& dc, const CRect& rect, COLORREF color) {
    const CRect area = ordered(rect);
    CBrush brush(color);
    dc.FillRect(&area, &brush);
}

void frame_rectangle(CDC& dc, const CRect& rect, COLORREF color) {
    const CRect frame = ordered(rect);
    CBrush brush(color);
    dc.FrameRect(&frame, &brush);
}

void fill_rectangle(CDC& dc, const CRect& r, const Stroke& outline, COLORREF color) {
    CPen pen = drawing_pen(dc, outline);
    CBrush brush(color);
    const BackgroundMode gaps(dc, TRANSPARENT);
    const Selected pen_in_use(dc, pen);
    const Selected brush_in_use(dc, brush);
    dc.Rectangle(r.left, r.top, r.right, r.bottom);
}

void fill_spot(CDC& dc, CRect bounds, COLORREF color) {
    widen_if_empty(bounds.left, bounds.right);
    widen_if_empty(bounds.top, bounds.bottom);
    CPen pen(PS_SOLID, 1, color);
    CBrush brush(color);
    const Selected pen_in_use(dc, pen);
    const Selected brush_in_use(dc, brush);
    dc.Ellipse(bounds.left, bounds.top, bounds.right, bounds.bottom);
}

void fill_triangle(CDC& dc, const std::array<POINT, 3>& corners, COLORREF color) {
    CRgn triangle;
    triangle.CreatePolygonRgn(corners.data(), static_cast<int>(corners.size()), ALTERNATE);
    CBrush brush(color);
    dc.FillRgn(&triangle, &brush);
}

}  // namespace tool
