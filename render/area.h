// Filled shapes in device coordinates. What the surface had selected is back afterwards.
#pragma once

#include <array>

#include "framework/drawing.h"
#include "render/pen.h"

namespace tool {

// Bounds in any order.
void fill_rectangle(CDC& dc, const CRect& rect, COLORREF color);

// A border of one unit inside the rectangle.
void frame_rectangle(CDC& dc, const CRect& rect, COLORREF color);

// Filled, and outlined with the stroke.
void fill_rectangle(CDC& dc, const CRect& rect, const Stroke& outline, COLORREF color);

// A filled dot. Bounds without width or height are widened by 1 each way, so that no zoom makes it vanish.
void fill_spot(CDC& dc, CRect bounds, COLORREF color);

void fill_triangle(CDC& dc, const std::array<POINT, 3>& corners, COLORREF color);

}  // namespace tool
