#include "geometry/line.h"

namespace tool {

Vec2 midpoint(Vec2 a, Vec2 b) {
    return {halfway(a.x, b.x), halfway(a.y, b.y)};
}

Vec2 foot_of_perpendicular(Vec2 p, const Line& line) {
    if (line.vertical()) return {line.a.x, p.y};
    if (line.horizontal()) return {p.x, line.a.y};
    return foot_on_slope(p, line);
}

Vec2 foot_on_parallel(Vec2 p, const Line& line, Vec2 through) {
    if (line.vertical()) return {through.x, p.y};
    if (line.horizontal()) return {p.x, through.y};
    const double m = line.slope();
    const double n = -(line.b.x - line.a.x) / (line.b.y - line.a.y);  // not -1 / m, which rounds otherwise
    const double k1 = p.y - p.x * n;
    const double k2 = through.y - through.x * m - k1;
    const double x = k2 / (n - m);
    return {x, n * x + k1};
}

}  // namespace tool
