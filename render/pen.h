// Line styles and widths, and the pens they ask for on a surface.
//
// Styles 0 to 6 are a pen's own (PS_SOLID to PS_INSIDEFRAME) in the width given. 101 to 106 are tracing lines of fixed
// width on the screen: 101 thin solid, 102 thick solid, 103 dotted, 104 dashed, 105 dash-dot, 106 dash-dot-dot. Any
// other code is solid.
#pragma once

#include "framework/drawing.h"

namespace tool {

// How a line looks. In print the width's halves are widths in tenths of a millimetre: the high 16 bits that of style
// 102, the low ones that of all others.
struct Stroke {
    int width;
    COLORREF color;
    int style;
};

using PenRule = CPen(const CDC& dc, const Stroke& stroke);

// For drawing over the image, on screen and paper: widths follow the printer's resolution or the map mode, and wide
// dashes are geometric with square ends.
PenRule drawing_pen;

// For drawing into the image itself: always cosmetic, and only style 102 follows the printer.
PenRule image_pen;

// The width of a line into an image of `image_size` pixels: 2, and 2 more for each further 750.
int image_line_width(int image_size);

}  // namespace tool
