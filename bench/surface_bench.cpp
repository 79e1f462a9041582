// Tracings through a surface against the plain Cairo calls that give the same picture, and what a PNG costs. The curves
// are those that a spline of a traced outline is thinned to: points about 10 pixels apart.
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "Tools.h"
#include "surface/picture_surface.h"

namespace {

using tool::PictureSurface;
using Curve = std::vector<POINT>;

constexpr int width = 2000, height = 2400;

// Outlines that wander over the picture.
std::vector<Curve> curves_of(int points) {
    std::mt19937 random(20260101);
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<Curve> curves(64);
    for (Curve& curve : curves) {
        double x = width * unit(random), y = height * unit(random), direction = 6 * unit(random);
        for (int i = 0; i < points; ++i) {
            curve.push_back({static_cast<LONG>(x), static_cast<LONG>(y)});
            direction += unit(random) - 0.5;
            x += 10 * std::cos(direction), y += 10 * std::sin(direction);
        }
    }
    return curves;
}

// Plain Cairo on a picture of the same kind.
class PlainCairo {
 public:
    explicit PlainCairo(bool smooth)
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)), context_(cairo_create(surface_)) {
        cairo_set_source_rgb(context_, 1, 1, 1);
        cairo_paint(context_);
        cairo_set_source_rgb(context_, 1, 0, 0);
        cairo_set_line_cap(context_, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
        if (!smooth) cairo_set_antialias(context_, CAIRO_ANTIALIAS_NONE);
    }
    ~PlainCairo() {
        cairo_destroy(context_);
        cairo_surface_destroy(surface_);
    }
    PlainCairo(const PlainCairo&) = delete;
    PlainCairo& operator=(const PlainCairo&) = delete;

    // Nearly the same picture: the pieces of a uniform Catmull-Rom spline are Bezier curves with handles a sixth of the
    // chord between the neighbours long.
    void bezier_spline(const POINT* points, int count, int pen_width) {
        cairo_set_line_width(context_, pen_width);
        cairo_move_to(context_, points[0].x + 0.5, points[0].y + 0.5);
        for (int i = 0; i + 1 < count; ++i) {
            const POINT &before = points[std::max(i - 1, 0)], &from = points[i], &to = points[i + 1];
            const POINT& behind = points[std::min(i + 2, count - 1)];
            cairo_curve_to(context_, from.x + (to.x - before.x) / 6.0 + 0.5, from.y + (to.y - before.y) / 6.0 + 0.5,
                           to.x - (behind.x - from.x) / 6.0 + 0.5, to.y - (behind.y - from.y) / 6.0 + 0.5, to.x + 0.5,
                           to.y + 0.5);
        }
        cairo_stroke(context_);
    }
    // The same picture: the spline's points at least 10 pixels apart, as a user would work them out inline.
    void spline(const POINT* points, int count, int pen_width) {
        Curve kept;
        double last_x = 0, last_y = 0;
        for (int i = 0; i + 1 < count; ++i) {
            const POINT &before = points[std::max(i - 1, 0)], &from = points[i], &to = points[i + 1];
            const POINT& behind = points[std::min(i + 2, count - 1)];
            const double chord = std::sqrt(std::pow(to.x - from.x, 2) + std::pow(to.y - from.y, 2));
            const double step = 1 / std::max(chord / 5, 10.0);
            for (double t = 0; t <= 1; t += step) {
                const double t2 = t * t, t3 = t2 * t;
                const double a = -t3 + 2 * t2 - t, b = 3 * t3 - 5 * t2 + 2, c = -3 * t3 + 4 * t2 + t, d = t3 - t2;
                const double x = 0.5 * (a * before.x + b * from.x + c * to.x + d * behind.x);
                const double y = 0.5 * (a * before.y + b * from.y + c * to.y + d * behind.y);
                if (!kept.empty() && std::sqrt((x - last_x) * (x - last_x) + (y - last_y) * (y - last_y)) < 10)
                    continue;
                kept.push_back({static_cast<LONG>(x), static_cast<LONG>(y)});
                last_x = x, last_y = y;
            }
        }
        polyline(kept, pen_width);
    }
    void polyline(const Curve& curve, int pen_width) {
        cairo_set_line_width(context_, pen_width);
        for (const POINT& p : curve) cairo_line_to(context_, p.x + 0.5, p.y + 0.5);
        cairo_stroke(context_);
    }
    std::uint32_t pixel(int x, int y) const {
        cairo_surface_flush(surface_);
        const auto* const row = cairo_image_surface_get_data(surface_) + y * cairo_image_surface_get_stride(surface_);
        return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xFFFFFF;
    }

 private:
    cairo_surface_t* surface_;
    cairo_t* context_;
};

// A comparison is worth something only while both give the same picture.
void demand_same(benchmark::State& state, const PictureSurface& surface, const PlainCairo& plain) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = plain.pixel(x, y);
            if (surface.pixel(x, y) == RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF)) continue;
            state.SkipWithError("the two pictures differ");
            return;
        }
    }
}

constexpr PictureSurface::Look looks[] = {PictureSurface::Look::crisp, PictureSurface::Look::smooth};

// Arguments: points of a curve, 1 for smooth, width of the pen.
void Polyline_Surface(benchmark::State& state) {
    const auto curves = curves_of(static_cast<int>(state.range(0)));
    const auto surface = PictureSurface::create(width, height, looks[state.range(1)]);
    CPen pen(PS_SOLID, static_cast<int>(state.range(2)), RGB(255, 0, 0));
    surface->SelectObject(&pen);
    for (auto _ : state)
        for (const Curve& curve : curves) surface->Polyline(curve.data(), static_cast<int>(curve.size()));
    state.SetItemsProcessed(state.iterations() * 64);
}

void Polyline_PlainCairo(benchmark::State& state) {
    const auto curves = curves_of(static_cast<int>(state.range(0)));
    PlainCairo plain(state.range(1) != 0);
    for (auto _ : state)
        for (const Curve& curve : curves) plain.polyline(curve, static_cast<int>(state.range(2)));
    state.SetItemsProcessed(state.iterations() * 64);
    if (state.range(1) == 0) return;
    const auto surface = PictureSurface::create(width, height, PictureSurface::Look::smooth);
    CPen pen(PS_SOLID, static_cast<int>(state.range(2)), RGB(255, 0, 0));
    surface->SelectObject(&pen);
    PlainCairo once(true);
    for (const Curve& curve : curves)
        surface->Polyline(curve.data(), static_cast<int>(curve.size())), once.polyline(curve, pen.GetWidth());
    demand_same(state, *surface, once);
}

// The whole way of a traced outline: spline, thinning, mapping, pen, polyline.
std::vector<Curve> outlines() {
    std::vector<Curve> curves = curves_of(200);
    for (Curve& curve : curves)
        for (std::size_t i = 0; i < 20; ++i) curve[i] = curve[10 * i];
    return curves;
}

void Spline_Surface(benchmark::State& state) {
    std::vector<Curve> curves = outlines();
    const auto surface = PictureSurface::create(width, height, looks[state.range(0)]);
    for (auto _ : state)
        for (Curve& curve : curves)
            CTools::Draw_SPLine(surface.get(), CPoint(0, 0), 1.0, curve.data(), 20, RGB(255, 0, 0), 2, 0, PS_SOLID, 0);
    state.SetItemsProcessed(state.iterations() * 64);
}

void Spline_PlainCairo(benchmark::State& state) {
    std::vector<Curve> curves = outlines();
    PlainCairo plain(state.range(0) != 0);
    for (auto _ : state)
        for (const Curve& curve : curves) plain.spline(curve.data(), 20, 2);
    state.SetItemsProcessed(state.iterations() * 64);
    if (state.range(0) == 0) return;
    const auto surface = PictureSurface::create(width, height, PictureSurface::Look::smooth);
    PlainCairo once(true);
    for (Curve& curve : curves) {
        CTools::Draw_SPLine(surface.get(), CPoint(0, 0), 1.0, curve.data(), 20, RGB(255, 0, 0), 2, 0, PS_SOLID, 0);
        once.spline(curve.data(), 20, 2);
    }
    demand_same(state, *surface, once);
}

void Spline_CairoBezier(benchmark::State& state) {
    const std::vector<Curve> curves = outlines();
    PlainCairo plain(state.range(0) != 0);
    for (auto _ : state)
        for (const Curve& curve : curves) plain.bezier_spline(curve.data(), 20, 2);
    state.SetItemsProcessed(state.iterations() * 64);
}

// What a picture costs to write: that is all of Cairo's and zlib's.
void Png_Surface(benchmark::State& state) {
    const auto surface = PictureSurface::create(width, height, PictureSurface::Look::smooth);
    CPen pen(PS_SOLID, 2, RGB(255, 0, 0));
    surface->SelectObject(&pen);
    for (const Curve& curve : curves_of(200)) surface->Polyline(curve.data(), static_cast<int>(curve.size()));
    for (auto _ : state) benchmark::DoNotOptimize(surface->png());
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"points", "smooth", "width"})->ArgsProduct({{2, 20, 200}, {0, 1}, {1, 2}});
}

BENCHMARK(Polyline_Surface)->Apply(sizes);
BENCHMARK(Polyline_PlainCairo)->Apply(sizes);
BENCHMARK(Spline_Surface)->ArgName("smooth")->Arg(0)->Arg(1);
BENCHMARK(Spline_PlainCairo)->ArgName("smooth")->Arg(0)->Arg(1);
BENCHMARK(Spline_CairoBezier)->ArgName("smooth")->Arg(0)->Arg(1);
BENCHMARK(Png_Surface)->Unit(benchmark::kMillisecond);

}  // namespace
