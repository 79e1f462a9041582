#include "surface/raster.h"

#include <algorithm>
#include <cstdlib>

#include "surface/raster_op.h"

namespace tool {

namespace {

// Where in a dash pattern a line is.
class DashCursor {
 public:
    explicit DashCursor(const std::vector<std::int64_t>& dashes) : dashes_(dashes) {
        for (const std::int64_t dash : dashes) total_ += dash;
    }

    // Whether step `at`, counted from the polyline's start, is painted. Steps are asked for in rising order.
    bool painted(std::uint64_t at) {
        if (total_ == 0) return true;
        if (at >= part_end_) find(at);
        return part_ % 2 == 0;
    }

 private:
    void find(std::uint64_t at) {
        std::uint64_t end = at - at % static_cast<std::uint64_t>(total_);
        part_ = 0;
        while ((end += static_cast<std::uint64_t>(dashes_[part_])) <= at) ++part_;
        part_end_ = end;
    }

    const std::vector<std::int64_t>& dashes_;
    std::int64_t total_ = 0;
    std::size_t part_ = 0;
    std::uint64_t part_end_ = 0;
};

std::uint64_t distance(std::int64_t a, std::int64_t b) {
    return static_cast<std::uint64_t>(std::abs(b - a));
}

std::uint64_t step_count(POINT a, POINT b) {
    return std::max(distance(a.x, b.x), distance(a.y, b.y));
}

}  // namespace

Ink ink_of(COLORREF color, int rop) {
    return {static_cast<std::uint32_t>(GetRValue(color)) << 16 | static_cast<std::uint32_t>(GetGValue(color)) << 8 |
                GetBValue(color),
            rop};
}

void Raster::row(std::int64_t y, std::int64_t left, std::int64_t right, Ink ink) {
    if (y < 0 || y >= height_) return;
    left = std::max<std::int64_t>(left, 0), right = std::min<std::int64_t>(right, width_);
    if (left >= right) return;
    std::uint32_t* const start = pixels_ + y * stride_;
    if (ink.rop == R2_COPYPEN) {
        std::fill(start + left, start + right, ink.pixel);
    } else {
        for (std::uint32_t* p = start + left; p != start + right; ++p) *p = combined(ink.rop, ink.pixel, *p);
    }
}

void Raster::box(const RECT& rect, Ink ink) {
    const int bottom = std::min<int>(rect.bottom, height_);
    for (int y = std::max<int>(rect.top, 0); y < bottom; ++y) row(y, rect.left, rect.right, ink);
}

// Calls visit(pixel, step) for each visible pixel of a line, by rule 1.
template <class Visit>
void Raster::steps(POINT from, POINT to, Visit visit) {
    const std::uint64_t dx = distance(from.x, to.x), dy = distance(from.y, to.y);
    const bool steep = dy > dx;
    const std::uint64_t count = steep ? dy : dx, across = steep ? dx : dy;
    if (count == 0) return;
    const std::int64_t start = steep ? from.y : from.x, cross_start = steep ? from.x : from.y;
    const bool backward = steep ? to.y < from.y : to.x < from.x;
    const bool cross_backward = steep ? to.x < from.x : to.y < from.y;
    const std::int64_t limit = steep ? height_ : width_, cross_limit = steep ? width_ : height_;

    // The steps whose coordinate along the longer axis is inside.
    const std::int64_t first = std::max<std::int64_t>(backward ? start - (limit - 1) : -start, 0);
    const std::int64_t past =
        std::min<std::int64_t>(backward ? start + 1 : limit - start, static_cast<std::int64_t>(count));
    if (first >= past) return;

    // Both factors have 32 bits. `error` is twice the remainder less a whole step, so that it is above 0 when the
    // quotient rounds up; the 1 turns a tie to the smaller coordinate.
    const std::uint64_t product = across * static_cast<std::uint64_t>(first);
    std::int64_t offset = static_cast<std::int64_t>(product / count);
    const auto whole = static_cast<std::int64_t>(2 * count), part = static_cast<std::int64_t>(2 * across);
    std::int64_t error =
        static_cast<std::int64_t>(2 * (product % count)) - static_cast<std::int64_t>(count) + (cross_backward ? 1 : 0);
    if (error > 0) ++offset, error -= whole;

    const std::ptrdiff_t along_step = (steep ? stride_ : 1) * (backward ? -1 : 1);
    const std::ptrdiff_t cross_step = (steep ? 1 : stride_) * (cross_backward ? -1 : 1);
    const std::int64_t sign = cross_backward ? -1 : 1;
    std::int64_t cross = cross_start + sign * offset;
    const std::int64_t along = backward ? start - first : start + first;
    auto at = static_cast<std::ptrdiff_t>(steep ? along * stride_ + cross : cross * stride_ + along);
    for (std::int64_t step = first; step < past; ++step) {
        if (static_cast<std::uint64_t>(cross) < static_cast<std::uint64_t>(cross_limit))
            visit(pixels_[at], static_cast<std::uint64_t>(step));
        at += along_step;
        error += part;
        if (error > 0) cross += sign, at += cross_step, error -= whole;
    }
}

void Raster::polyline(std::span<const POINT> points, const DashedInk& ink) {
    const auto paint = [](std::uint32_t& pixel, Ink with) { pixel = combined(with.rop, with.pixel, pixel); };
    DashCursor dashes(ink.dashes);
    std::uint64_t before = 0;  // steps of the segments before
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (!ink.dashes.empty()) {
            steps(points[i - 1], points[i], [&](std::uint32_t& pixel, std::uint64_t step) {
                if (dashes.painted(before + step))
                    paint(pixel, ink.ink);
                else if (ink.gap)
                    paint(pixel, *ink.gap);
            });
            before += step_count(points[i - 1], points[i]);
        } else if (ink.ink.rop == R2_COPYPEN) {
            steps(points[i - 1], points[i], [&](std::uint32_t& pixel, std::uint64_t) { pixel = ink.ink.pixel; });
        } else {
            steps(points[i - 1], points[i], [&](std::uint32_t& pixel, std::uint64_t) { paint(pixel, ink.ink); });
        }
    }
}

// The disc that the pen is, moved from a to b: on each row its widest place that gets there.
void Raster::wide_line(POINT a, POINT b, int width, Ink ink) {
    const std::int64_t half = width / 2;
    const std::int64_t left = std::min(a.x, b.x) - half, right = std::max(a.x, b.x) - half + width;
    const std::int64_t top = std::min(a.y, b.y) - half, last_top = std::max(a.y, b.y) - half;
    // How far each row of the disc starts from the left of its box, drawn by rule 5.
    std::vector<std::uint32_t> disc(static_cast<std::size_t>(width) * static_cast<std::size_t>(width));
    Raster(disc.data(), width, width, width).ellipse({0, 0, width, width}, Ink{1}, Ink{1});
    std::vector<std::int64_t> inset;
    for (auto at = disc.begin(); at != disc.end(); at += width) inset.push_back(std::find(at, at + width, 1u) - at);

    const std::int64_t bottom = std::min<std::int64_t>(last_top + width, height_);
    for (std::int64_t y = std::max<std::int64_t>(top, 0); y < bottom; ++y) {
        const std::int64_t lowest = std::max<std::int64_t>(y - last_top, 0);
        const std::int64_t highest = std::min<std::int64_t>(y - top, width - 1);
        const std::int64_t in = inset[static_cast<std::size_t>(std::clamp(half, lowest, highest))];
        row(y, left + in, right - in, ink);
    }
}

void Raster::wide_line_square(POINT a, POINT b, int width, int extra, const DashedInk& ink) {
    const bool upright = a.x == b.x;
    const std::int64_t from = upright ? a.y : a.x, to = upright ? b.y : b.x;
    const std::int64_t side = (upright ? a.x : a.y) - std::int64_t{width / 2};
    const bool backward = to < from;
    const std::int64_t low = std::min(from, to) - extra, high = std::max(from, to) + extra;
    const std::int64_t limit = upright ? height_ : width_;
    DashCursor dashes(ink.dashes);
    const std::int64_t first = std::max<std::int64_t>(backward ? high - limit : -low, 0), past = high - low;
    for (std::int64_t step = first; step < std::min(past, first + limit); ++step) {
        if (!dashes.painted(static_cast<std::uint64_t>(step))) continue;
        const std::int64_t at = backward ? high - 1 - step : low + step;
        for (std::int64_t across = side; across < side + width; ++across)
            pixel(upright ? across : at, upright ? at : across, ink.ink);
    }
}

}  // namespace tool
