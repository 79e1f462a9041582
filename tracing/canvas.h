// What pages and pictures are drawn on: a surface in the map mode MM_HIMETRIC that counts as a printer, so that the
// widths of pens are in mm. Places are in mm from the upper left corner, y down.
#pragma once

#include <Framework.h>
#include <framework/drawing.h>

#include <functional>

#include "cases/case.h"
#include "tracing/box.h"

namespace cephtool {

inline constexpr double mm_a_point = 25.4 / 72;

struct Film;

struct Canvas {
    CDC& dc;
    CDC& measure;                                  // tells how wide texts are; may be `dc`
    std::function<void(const char*)> begin_layer;  // what is drawn from here on belongs to this part of the drawing
    std::function<void(const Film&, const RECT&)> draw_picture;  // stretched over the rectangle
};

inline constexpr double units_a_mm = 100;  // of MM_HIMETRIC

// A length in units, within what surfaces can have.
int unit(double mm, double units);

// As the library's functions with flipY take it, and as the surface sees it, where y points up.
CPoint on_surface(Position mm);
CPoint upward(Position mm);
RECT upward(const Box& mm);

void draw_line(CDC& dc, Position from, Position to, int tenths_mm, COLORREF colour);
void draw_dot(CDC& dc, Position at, double radius_mm, COLORREF colour);
void fill_box(CDC& dc, const Box& box, COLORREF colour);
void fill_triangle(CDC& dc, Position a, Position b, Position c, COLORREF colour);

}  // namespace cephtool
