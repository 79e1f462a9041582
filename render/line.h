// Lines and curves in device coordinates. What the surface had selected is back afterwards; its current position is
// where the line ends.
#pragma once

#include <span>

#include "framework/drawing.h"
#include "render/pen.h"

namespace tool {

void draw_line(CDC& dc, CPoint from, CPoint to, const Stroke& stroke, PenRule& pen_rule);

void draw_polyline(CDC& dc, std::span<const POINT> points, const Stroke& stroke, PenRule& pen_rule);

// The outline, with nothing inside.
void draw_rectangle(CDC& dc, const CRect& rect, const Stroke& stroke);
void draw_ellipse(CDC& dc, const CRect& bounds, const Stroke& stroke);

// As CDC::Arc.
void draw_arc(CDC& dc, const CRect& bounds, CPoint start, CPoint end, const Stroke& stroke);

}  // namespace tool
