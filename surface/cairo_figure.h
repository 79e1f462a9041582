// Figures and pictures on a Cairo context whose unit is a device pixel, the origin the corner of the first one.
#pragma once

#include "framework/plane.h"
#include "surface/background.h"
#include "surface/cairo_handles.h"
#include "surface/figure.h"

namespace tool {

// In the context's current source: the inside, and the outline with or without its dashes. Coordinates beyond 4
// million pixels count as 4 million, as Cairo's own numbers end there. `shift` moves the outline right and down. The
// context keeps the pen, as saving and restoring costs as much as a short line.
void fill_figure(cairo_t* context, const Figure& figure);
void stroke_figure(cairo_t* context, const Figure& figure, bool dashed = true, double shift = 0);

// In the figure's own colours; raster operations as blend_of has them.
void paint_figure(cairo_t* context, const Figure& figure);

void set_color(cairo_t* context, COLORREF color);

// The picture stretched over the box. A page takes over the file's own compressed JPEG.
void paint_background(cairo_t* context, const Background& picture, const DeviceBox& box);

}  // namespace tool
