// What a pen paints, in device pixels.
#pragma once

#include <optional>
#include <vector>

#include "framework/drawing.h"

namespace tool {

struct PenStroke {
    enum class Ends { flat, square, round };

    COLORREF color;
    double width;                 // at least 1
    Ends ends;                    // of the line and of each dash
    std::vector<double> dashes;   // painted, unpainted, ..., ends included; empty: solid
    std::optional<COLORREF> gap;  // the background that a dashed line of one pixel paints

    bool thin() const { return width < 1.5; }
    // The dashes without their square or round ends, as stroking libraries count them.
    std::vector<double> bare_dashes() const;
};

// Nothing for a pen that paints nothing. `pixels` is the length of a logical unit; `dash_pixels` that of a step in the
// dashes of thin pens, which do not grow with the pen.
std::optional<PenStroke> stroke_of(const CPen& pen, double pixels, double dash_pixels, std::optional<COLORREF> gap);

}  // namespace tool
