// From image pixels to device coordinates: zoomed, cut toward zero, then moved by the scroll position. Device
// coordinates that leave 32 bits are the nearest bound; NaN gives 0.
#pragma once

#include <cmath>
#include <limits>

#include "framework/plane.h"
#include "geometry/vec2.h"
#include "platform/numbers.h"

namespace tool {

// Kept: the product is cut, not rounded, and before the offset is taken off, so that -0.5 and 0.5 share a pixel.
inline int device_coordinate(double v, double zoom, int offset) {
    return truncated(std::trunc(zoom * v) - offset);
}

// Back again: the device pixel's middle, rounded to the pixel, halves toward zero, so that the way out and back is
// exact.
inline int image_coordinate(int device, double zoom, int offset) {
    const double cut = static_cast<double>(device) + offset;
    if (cut == 0 || !(zoom > 0)) return 0;
    const double middle = (std::abs(cut) + 0.5) / zoom;
    return truncated(std::copysign(std::ceil(middle - 0.5), cut));
}

constexpr int negated(int v) {
    return v == std::numeric_limits<int>::min() ? std::numeric_limits<int>::max() : -v;
}

// Where the image lies on the device.
struct View {
    double zoom;
    CPoint offset;

    CPoint device(Vec2 p) const {
        return {device_coordinate(p.x, zoom, offset.x), device_coordinate(p.y, zoom, offset.y)};
    }
    CRect device(const RECT& r) const { return between(device(Vec2(r.left, r.top)), device(Vec2(r.right, r.bottom))); }
    // The square round a circle.
    CRect device(Vec2 centre, double radius) const {
        return between(device(centre - Vec2(radius, radius)), device(centre + Vec2(radius, radius)));
    }

    // The image pixel that is seen at a device pixel, of several the middle one; at a zoom of 1 or more the one whose
    // device() is `p`. (0, 0) for a zoom that is none.
    CPoint image(CPoint p) const {
        return {image_coordinate(p.x, zoom, offset.x), image_coordinate(p.y, zoom, offset.y)};
    }

    static CRect between(CPoint a, CPoint b) { return {a.x, a.y, b.x, b.y}; }
};

// For the map modes whose y points up.
constexpr CPoint flipped(CPoint p) {
    return {p.x, negated(p.y)};
}
constexpr CRect flipped(const CRect& r) {
    return {r.left, negated(r.top), r.right, negated(r.bottom)};
}

// A page in a map mode whose y points up: the origin is added before scaling, and each axis has its own zoom.
struct Page {
    CPoint origin;
    double zoom_x, zoom_y;

    CPoint device(CPoint p) const {
        const Vec2 on_page = Vec2(origin) + Vec2(p);
        return flipped(CPoint(device_coordinate(on_page.x, zoom_x, 0), device_coordinate(on_page.y, zoom_y, 0)));
    }
};

}  // namespace tool
