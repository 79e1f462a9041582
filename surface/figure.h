// What a surface is asked to paint, in device pixels, after map mode, pen and brush have been worked out.
//
// A whole number is the middle of a pixel; y points down.
#pragma once

#include <optional>
#include <span>

#include "framework/drawing.h"
#include "surface/pen_stroke.h"

namespace tool {

struct DevicePoint {
    double x, y;
};

// In order; right and bottom are exclusive, as the platform's are.
struct DeviceBox {
    double left, top, right, bottom;
};

struct Figure {
    enum class Kind {
        open,     // points; the last one itself stays unpainted in a crisp picture
        closed,   // points, back to the first
        frame,    // a rectangle with an outline
        area,     // a rectangle of whole pixels
        ellipse,  // inside the box
        arc  // the box's ellipse counterclockwise, as seen, from the ray through points[0] to that through points[1]
    };
    Kind kind;
    std::span<const DevicePoint> points = {};
    DeviceBox box = {};
    std::optional<PenStroke> stroke = {};
    std::optional<COLORREF> fill = {};
    int fill_mode = ALTERNATE;
    int rop = R2_COPYPEN;
};

// The nearest that pages and vector pictures have to a raster operation: copying, or the difference of the colours,
// which is R2_XORPEN for a white pen. Nothing for R2_NOP.
struct Blend {
    COLORREF color;
    bool difference;
};
std::optional<Blend> blend_of(int rop, COLORREF color);

}  // namespace tool
