#include "render/spline.h"

namespace tool {

Vec2 catmull_rom(const Controls& c, double t) {
    const double t2 = t * t, t3 = t2 * t;
    const double w0 = -t3 + 2 * t2 - t, w1 = 3 * t3 - 5 * t2 + 2, w2 = -3 * t3 + 4 * t2 + t, w3 = t3 - t2;
    return {0.5 * (w0 * c.before.x + w1 * c.from.x + w2 * c.to.x + w3 * c.after.x),
            0.5 * (w0 * c.before.y + w1 * c.from.y + w2 * c.to.y + w3 * c.after.y)};
}

Vec2 b_spline(const Controls& c, double t) {
    const double t2 = t * t, t3 = t2 * t, rest = 1 - t;
    const double w0 = rest * rest * rest, w1 = 3 * t3 - 6 * t2 + 4, w2 = -3 * t3 + 3 * t2 + 3 * t + 1, w3 = t3;
    return {(w0 * c.before.x + w1 * c.from.x + w2 * c.to.x + w3 * c.after.x) / 6,
            (w0 * c.before.y + w1 * c.from.y + w2 * c.to.y + w3 * c.after.y) / 6};
}

}  // namespace tool
