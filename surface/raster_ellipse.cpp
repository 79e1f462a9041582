#include <cstdint>

#include "surface/raster.h"

namespace tool {

namespace {

// Calls visit(X, Y) for each step of rule 5 through a quarter of the outline.
template <class Visit>
void quarter(std::int64_t w, std::int64_t h, Visit visit) {
    const auto f = [=](std::int64_t x, std::int64_t y) { return h * h * x * x + w * w * y * y - w * w * h * h; };
    for (std::int64_t x = w, y = h % 2; x >= 0;) {
        visit(x, y);
        const std::int64_t corner = f(x - 2, y + 2);
        const bool outward = corner + f(x - 2, y) <= 0, inward = corner + f(x, y + 2) >= 0;
        if (outward) y += 2;
        if (inward) x -= 2;
    }
}

// The box's columns and rows from its centre, both doubled.
struct Centre {
    std::int64_t x, y;

    explicit Centre(const RECT& box)
        : x(std::int64_t{box.left} + box.right - 1), y(std::int64_t{box.top} + box.bottom - 1) {}
    std::int64_t column(std::int64_t doubled) const { return (x + doubled) / 2; }
    std::int64_t line(std::int64_t doubled) const { return (y + doubled) / 2; }
};

// Calls visit(x, y) for each of up to four mirrored pixels.
template <class Visit>
void mirrored(const Centre& centre, std::int64_t x, std::int64_t y, Visit visit) {
    for (const std::int64_t v : {y, -y}) {
        visit(centre.column(x), centre.line(v));
        if (x != 0) visit(centre.column(-x), centre.line(v));
        if (y == 0) break;
    }
}

bool empty(const RECT& box) {
    return box.right <= box.left || box.bottom <= box.top || (box.right - box.left == 1 && box.bottom - box.top == 1);
}

}  // namespace

void Raster::ellipse(const RECT& box, const std::optional<Ink>& outline, const std::optional<Ink>& fill) {
    if (empty(box)) return;
    if (box.right - box.left <= 2) {
        if (outline || fill) this->box(box, outline ? *outline : *fill);
        return;
    }
    const Centre centre(box);
    const auto fill_rows = [&](std::int64_t from, std::int64_t to, std::int64_t y) {
        row(centre.line(y), from, to, *fill);
        if (y != 0) row(centre.line(-y), from, to, *fill);
    };
    std::int64_t current = -1, inner = 0;  // the line being gone through and its innermost outline pixel
    quarter(box.right - 1 - box.left, box.bottom - 1 - box.top, [&](std::int64_t x, std::int64_t y) {
        if (y != current) {
            if (outline && fill && current >= 0) fill_rows(centre.column(-inner) + 1, centre.column(inner), current);
            if (!outline && fill) fill_rows(centre.column(-x), centre.column(x) + 1, y);
        }
        current = y, inner = x;
        if (outline) mirrored(centre, x, y, [&](std::int64_t px, std::int64_t py) { pixel(px, py, *outline); });
    });
    if (outline && fill) fill_rows(centre.column(-inner) + 1, centre.column(inner), current);
}

void Raster::arc(const RECT& box, POINT from, POINT to, Ink ink) {
    if (empty(box)) return;
    struct Ray {
        double x, y;
    };
    const Centre centre(box);
    // Doubled distances from the centre, y up, so that counterclockwise is as in a textbook.
    const auto ray_to = [&](std::int64_t x, std::int64_t y) {
        return Ray{static_cast<double>(2 * x - centre.x), static_cast<double>(centre.y - 2 * y)};
    };
    const auto cross = [](const Ray& a, const Ray& b) { return a.x * b.y - a.y * b.x; };
    const Ray start = ray_to(from.x, from.y), end = ray_to(to.x, to.y);
    const double turn = cross(start, end);
    const bool half_or_less = turn > 0 || (turn == 0 && start.x * end.x + start.y * end.y < 0);
    const bool all = turn == 0 && !half_or_less;
    quarter(box.right - 1 - box.left, box.bottom - 1 - box.top, [&](std::int64_t x, std::int64_t y) {
        mirrored(centre, x, y, [&](std::int64_t px, std::int64_t py) {
            const Ray ray = ray_to(px, py);
            const bool behind_start = cross(start, ray) >= 0, before_end = cross(ray, end) >= 0;
            if (all || (half_or_less ? behind_start && before_end : behind_start || before_end)) pixel(px, py, ink);
        });
    });
}

}  // namespace tool
