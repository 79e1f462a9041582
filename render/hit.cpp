#include "render/hit.h"

#include <algorithm>

#include "render/spline.h"

namespace tool {
namespace {

// Squared distances, in device pixels.
class Nearest {
 public:
    Nearest(Vec2 at, int radius) : at_(at), nearest_(radius < 0 ? -1.0 : static_cast<double>(radius) * radius) {}

    void meet(int index, Vec2 point) { meet_at(index, point - at_); }

    void meet(int index, Vec2 from, Vec2 to) {
        const Vec2 line = to - from, start = from - at_;
        const double squared = dot(line, line);
        const double t = squared > 0 ? std::clamp(-dot(start, line) / squared, 0.0, 1.0) : 0.0;
        meet_at(index, {start.x + t * line.x, start.y + t * line.y});
    }

    std::optional<int> index() const { return index_; }

 private:
    void meet_at(int index, Vec2 gap) {
        const double squared = dot(gap, gap);
        if (index_ ? !(squared < nearest_) : !(squared <= nearest_)) return;
        nearest_ = squared;
        index_ = index;
    }

    Vec2 at_;
    double nearest_;
    std::optional<int> index_;
};

}  // namespace

std::optional<int> nearest_point(std::span<const POINT> points, CPoint at, int radius, const View& view) {
    Nearest nearest(at, radius);
    for (std::size_t i = 0; i < points.size(); ++i)
        if (points[i].x != 0 || points[i].y != 0) nearest.meet(static_cast<int>(i), view.device(points[i]));
    return nearest.index();
}

std::optional<int> nearest_outline(std::span<const tagTRACELINE> outlines, CPoint at, int radius, const View& view) {
    Nearest nearest(at, radius);
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        const tagTRACELINE& outline = outlines[i];
        if (!outline.Points || outline.Count < 2) continue;
        const std::span points(outline.Points, static_cast<std::size_t>(outline.Count));
        const int index = static_cast<int>(i);
        if (points.size() == 2) {
            nearest.meet(index, view.device(points[0]), view.device(points[1]));
            continue;
        }
        std::optional<Vec2> before;
        sample_thinned(Curve(points, outline.Closed != 0), [&](Vec2 p) {
            const Vec2 here = view.device(p);
            nearest.meet(index, before.value_or(here), here);
            before = here;
        });
    }
    return nearest.index();
}

}  // namespace tool
