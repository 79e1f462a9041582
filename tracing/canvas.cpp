#include "tracing/canvas.h"

#include <Tools.h>

#include <algorithm>
#include <cmath>

namespace cephtool {
namespace {

constexpr int up = 1;  // the library's flag for map modes whose y points up: it negates y

// Beyond this nothing is on the page, and coordinates would leave the surfaces' range.
constexpr double farthest_unit = 1e8;

}  // namespace

int unit(double mm, double units) {
    return static_cast<int>(std::lround(std::clamp(mm * units, -farthest_unit, farthest_unit)));
}

CPoint on_surface(Position mm) {
    return {unit(mm.x, units_a_mm), unit(mm.y, units_a_mm)};
}

CPoint upward(Position mm) {
    const CPoint p = on_surface(mm);
    return {p.x, -p.y};
}

RECT upward(const Box& mm) {
    const CPoint top_left = upward(Position{mm.left, mm.top}), bottom_right = upward(Position{mm.right, mm.bottom});
    return {top_left.x, top_left.y, bottom_right.x, bottom_right.y};
}

void draw_line(CDC& dc, Position from, Position to, int tenths_mm, COLORREF colour) {
    const CPoint a = on_surface(from), b = on_surface(to);
    CTools::Draw_Line(&dc, a.x, a.y, b.x, b.y, tenths_mm, colour, PS_SOLID, up);
}

void draw_dot(CDC& dc, Position at, double radius_mm, COLORREF colour) {
    CTools::Spot(&dc, upward(at), 1, CPoint(0, 0), static_cast<short>(unit(radius_mm, units_a_mm)), colour, 0);
}

void fill_box(CDC& dc, const Box& box, COLORREF colour) {
    CTools::Area_Make(&dc, upward(box), colour);
}

void fill_triangle(CDC& dc, Position a, Position b, Position c, COLORREF colour) {
    const POINT corners[] = {upward(a), upward(b), upward(c)};
    CPen none(PS_NULL, 0, RGB(0, 0, 0));
    CBrush brush(colour);
    CPen* const pen_before = dc.SelectObject(&none);
    CBrush* const brush_before = dc.SelectObject(&brush);
    dc.Polygon(corners, 3);
    dc.SelectObject(brush_before);
    dc.SelectObject(pen_before);
}

}  // namespace cephtool
