// The platform's own pixels: thin lines, ellipses, wide lines along an axis and polygon regions, in whole numbers.
//
// 1. Line: along the longer axis one pixel a step, the last one left out; the other coordinate is the exact quotient
//    rounded to the nearest integer, a tie to the smaller one, whatever the direction. Clipping changes no pixel.
// 2. Dashes run on over the corners of one polyline, in steps of the longer axis.
// 3. Polyline: its segments by rule 1, so that corners are painted once and the last point not at all.
// 4. Region: pixel (x, y) belongs to it when y is in [top, bottom) and x in [ceil(left edge at y), ceil(right edge
//    at y)). Edges are taken at the integer row, not at its middle.
// 5. Ellipse in [l, r) x [t, b): with w = r-1-l, h = b-1-t, X and Y twice the distance from the centre and
//    f = h²X² + w²Y² - w²h², start at X = w, Y = h mod 2, paint the four mirrored pixels, then Y += 2 if
//    f(X-2, Y+2) + f(X-2, Y) <= 0 and X -= 2 if f(X-2, Y+2) + f(X, Y+2) >= 0, while X >= 0.
// 6. Pens of width w along an axis cover w rows from y - floor(w/2). Square ends: from x0 - floor(w/2) up to, but
//    without, x1 + floor(w/2). Round ends are half discs of diameter w.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "framework/drawing.h"

namespace tool {

// A colour as the picture stores it (0xRRGGBB; the top byte is not used) and how it combines with what is there.
struct Ink {
    std::uint32_t pixel;
    int rop = R2_COPYPEN;
};

Ink ink_of(COLORREF color, int rop);

// Painted and unpainted steps in turn; empty is solid. The unpainted ones are left, or painted with `gap`.
struct DashedInk {
    Ink ink;
    std::vector<std::int64_t> dashes = {};
    std::optional<Ink> gap = {};
};

// Paints on pixels that are not its own. Every coordinate of 32 bits is allowed; what lies outside costs no time.
class Raster {
 public:
    // `stride` is the distance of rows in pixels.
    Raster(std::uint32_t* pixels, int width, int height, std::ptrdiff_t stride)
        : pixels_(pixels), width_(width), height_(height), stride_(stride) {}

    void pixel(std::int64_t x, std::int64_t y, Ink ink) { row(y, x, x + 1, ink); }
    void row(std::int64_t y, std::int64_t left, std::int64_t right, Ink ink);
    void box(const RECT& rect, Ink ink);  // right and bottom exclusive, in order

    void polyline(std::span<const POINT> points, const DashedInk& ink);
    void region(std::span<const POINT> points, int fill_mode, Ink ink);

    // Boxes in order. Each pixel is painted once. Without an outline the filling covers its pixels too.
    static constexpr int ellipse_side_limit = 40000;
    void ellipse(const RECT& box, const std::optional<Ink>& outline, const std::optional<Ink>& fill);
    // The outline's pixels counterclockwise, as seen, between the rays from the centre through two points.
    void arc(const RECT& box, POINT from, POINT to, Ink ink);

    // Along an axis; a and b may be one point. `extra` is how far a square end stands out.
    static constexpr int wide_limit = 256;
    void wide_line(POINT a, POINT b, int width, Ink ink);
    void wide_line_square(POINT a, POINT b, int width, int extra, const DashedInk& ink);

 private:
    std::uint32_t* pixels_;
    int width_, height_;
    std::ptrdiff_t stride_;

    template <class Visit>
    void steps(POINT from, POINT to, Visit visit);
};

}  // namespace tool
