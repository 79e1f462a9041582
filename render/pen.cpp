#include "render/pen.h"

#include <algorithm>
#include <cstdint>

#include "platform/numbers.h"

namespace tool {

namespace {

enum TracingStyle { thin = 101, thick = 102, dotted = 103, dashed = 104, dash_dot = 105, dash_dot_dot = 106 };

struct Line {
    int style, width;
};

// The stroke as it is on the screen.
Line on_screen(const Stroke& stroke) {
    switch (stroke.style) {
        case thin: return {PS_SOLID, 1};
        case thick: return {PS_SOLID, 2};
        case dotted: return {PS_DOT, 1};
        case dashed: return {PS_DASH, 1};
        case dash_dot: return {PS_DASHDOT, 1};
        case dash_dot_dot: return {PS_DASHDOTDOT, 1};
        default: break;
    }
    const bool known = stroke.style >= PS_SOLID && stroke.style <= PS_INSIDEFRAME;
    return {known ? stroke.style : PS_SOLID, stroke.width};
}

// Kept: a division of whole numbers, as the widths of stored print layouts were chosen with it.
int pixels_per_mm(const CDC& dc) {
    const int width_mm = dc.GetDeviceCaps(HORZSIZE);
    return width_mm > 0 ? dc.GetDeviceCaps(HORZRES) / width_mm : 0;
}

double printed_width_mm(const Stroke& stroke) {
    const auto halves = static_cast<std::uint32_t>(stroke.width);
    const auto tenths = static_cast<std::int16_t>(stroke.style == thick ? halves >> 16 : halves & 0xFFFF);
    return std::max(tenths / 10.0, 0.1);
}

int printed_width(const CDC& dc, double width_mm, int screen_width) {
    switch (dc.GetMapMode()) {
        case MM_TEXT: return std::max(screen_width, truncated(pixels_per_mm(dc) * width_mm));
        case MM_LOMETRIC: return truncated(width_mm * 10.0);
        case MM_HIMETRIC: return truncated(width_mm * 100.0);
        default: return screen_width;
    }
}

// Style 102 in an image: 0.6 mm wherever that can be told.
int printed_image_width(const CDC& dc) {
    const int width = truncated(0.6 * pixels_per_mm(dc));
    if (width >= 2) return width;
    switch (dc.GetMapMode()) {
        case MM_LOMETRIC: return 6;
        case MM_HIMETRIC: return 60;
        default: return 2;
    }
}

}  // namespace

CPen drawing_pen(const CDC& dc, const Stroke& stroke) {
    Line line = on_screen(stroke);
    if (dc.IsPrinting()) line.width = printed_width(dc, printed_width_mm(stroke), line.width);
    if (line.width > 1 && line.style >= PS_DASH && line.style <= PS_DASHDOTDOT) {
        const LOGBRUSH brush = {BS_SOLID, stroke.color, 0};
        return CPen(line.style | PS_GEOMETRIC | PS_ENDCAP_SQUARE, line.width, &brush);
    }
    return CPen(line.style, line.width, stroke.color);
}

// Kept: thin and dashed lines stay one pixel wide in print, too, as a wider cosmetic pen would lose its dashes, and
// style 102 takes the given width on the screen, where drawing_pen takes 2.
CPen image_pen(const CDC& dc, const Stroke& stroke) {
    Line line = on_screen(stroke);
    if (stroke.style == thick) line.width = dc.IsPrinting() ? printed_image_width(dc) : stroke.width;
    return CPen(line.style, line.width, stroke.color);
}

int image_line_width(int image_size) {
    return image_size > 750 ? 2 * (image_size / 750) : 2;
}

}  // namespace tool
