#include "render/line.h"

#include "render/put_back.h"

namespace tool {

namespace {

// Draws with the stroke's pen; the gaps of a dashed line show what is below.
template <class Draw>
void with_pen(CDC& dc, const Stroke& stroke, PenRule& pen_rule, Draw draw) {
    CPen pen = pen_rule(dc, stroke);
    const BackgroundMode gaps(dc, TRANSPARENT);
    const Selected pen_in_use(dc, pen);
    draw();
}

template <class Draw>
void outlined(CDC& dc, const Stroke& stroke, Draw draw) {
    const LOGBRUSH nothing = {BS_NULL, 0, 0};
    CBrush hollow;
    hollow.CreateBrushIndirect(&nothing);
    const Selected brush_in_use(dc, hollow);
    with_pen(dc, stroke, drawing_pen, draw);
}

}  // namespace

void draw_line(CDC& dc, CPoint from, CPoint to, const Stroke& stroke, PenRule& pen_rule) {
    with_pen(dc, stroke, pen_rule, [&] {
        dc.MoveTo(from.x, from.y);
        dc.LineTo(to.x, to.y);
    });
}

void draw_polyline(CDC& dc, std::span<const POINT> points, const Stroke& stroke, PenRule& pen_rule) {
    with_pen(dc, stroke, pen_rule, [&] { dc.Polyline(points.data(), static_cast<int>(points.size())); });
}

void draw_rectangle(CDC& dc, const CRect& r, const Stroke& stroke) {
    outlined(dc, stroke, [&] { dc.Rectangle(r.left, r.top, r.right, r.bottom); });
}

void draw_ellipse(CDC& dc, const CRect& b, const Stroke& stroke) {
    outlined(dc, stroke, [&] { dc.Ellipse(b.left, b.top, b.right, b.bottom); });
}

void draw_arc(CDC& dc, const CRect& b, CPoint start, CPoint end, const Stroke& stroke) {
    with_pen(dc, stroke, drawing_pen,
             [&] { dc.Arc(b.left, b.top, b.right, b.bottom, start.x, start.y, end.x, end.y); });
}

}  // namespace tool
