// Sampling and drawing a traced outline: the library against the formulas that a user would write inline, on the same
// seeded outlines of n control points about 60 pixels apart. The surface draws nothing, so that only the curve counts.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "Tools.h"

namespace {

using Outline = std::vector<tagPOINT>;
using Four = std::array<CPointD, 4>;

Outline outline_of(std::int64_t count) {
    std::mt19937 random(20260101);
    std::uniform_int_distribution<int> step(-20, 80);
    Outline points(static_cast<std::size_t>(count));
    tagPOINT last{100, 100};
    for (tagPOINT& p : points) p = last = {last.x + step(random), last.y + step(random)};
    return points;
}

CPointD inline_catmull_rom(const Four& p, double t) {
    const double t2 = t * t, t3 = t2 * t;
    const double a = -t3 + 2 * t2 - t, b = 3 * t3 - 5 * t2 + 2, c = -3 * t3 + 4 * t2 + t, d = t3 - t2;
    return {0.5 * (a * p[0].x + b * p[1].x + c * p[2].x + d * p[3].x),
            0.5 * (a * p[0].y + b * p[1].y + c * p[2].y + d * p[3].y)};
}

void SplinePoint_Tool(benchmark::State& state) {
    double t = 0.0, x, y;
    for (auto _ : state) {
        CTools::SplineCal(&x, &y, 0, 0, 60, 10, 120, -10, 180, 40, t, CRect(), 0);
        benchmark::DoNotOptimize(x + y);
        t = t < 1.0 ? t + 0.01 : 0.0;
    }
}
BENCHMARK(SplinePoint_Tool);

void SplinePoint_Inline(benchmark::State& state) {
    const Four p = {CPointD(0, 0), CPointD(60, 10), CPointD(120, -10), CPointD(180, 40)};
    double t = 0.0;
    for (auto _ : state) {
        const CPointD at = inline_catmull_rom(p, t);
        benchmark::DoNotOptimize(at.x + at.y);
        t = t < 1.0 ? t + 0.01 : 0.0;
    }
}
BENCHMARK(SplinePoint_Inline);

class NullSurface : public CDC {
 public:
    BOOL Polyline(const POINT* points, int count) override {
        benchmark::DoNotOptimize(points);
        benchmark::DoNotOptimize(count);
        return TRUE;
    }
};

void Outline_Tool(benchmark::State& state) {
    const Outline points = outline_of(state.range(0));
    NullSurface surface;
    for (auto _ : state)
        CTools::Draw_SPLine(&surface, {10, 10}, 1.5, points.data(), static_cast<short>(points.size()), 0, 1, 0, 0, 0);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Outline_Tool)->Arg(8)->Arg(40)->Arg(200)->Arg(1000);

// The same samples and thinning in one pass into a vector that grows.
void Outline_Inline(benchmark::State& state) {
    const Outline points = outline_of(state.range(0));
    const int n = static_cast<int>(points.size());
    NullSurface surface;
    for (auto _ : state) {
        Outline kept;
        CPointD last;
        for (int i = 0; i + 1 < n; ++i) {
            Four p;
            for (int k = 0; k < 4; ++k)
                p[static_cast<std::size_t>(k)] =
                    CPointD(CPoint(points[static_cast<std::size_t>(std::clamp(i + k - 1, 0, n - 1))]));
            const double dt = 1 / std::max(std::hypot(p[2].x - p[1].x, p[2].y - p[1].y) / 5, 10.0);
            for (double t = 0; t <= 1.0; t += dt) {
                const CPointD at = inline_catmull_rom(p, t);
                if (!kept.empty() && std::hypot(at.x - last.x, at.y - last.y) < 10) continue;
                last = at;
                kept.push_back({static_cast<int>(at.x * 1.5) - 10, static_cast<int>(at.y * 1.5) - 10});
            }
        }
        surface.Polyline(kept.data(), static_cast<int>(kept.size()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Outline_Inline)->Arg(8)->Arg(40)->Arg(200)->Arg(1000);

void OutlineLength_Tool(benchmark::State& state) {
    const Outline points = outline_of(state.range(0));
    const auto n = static_cast<short>(points.size());
    for (auto _ : state) benchmark::DoNotOptimize(CTools::Get_SPLineLength(points.data(), n, 0, n - 1, 0, 0.1));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(OutlineLength_Tool)->Arg(40);

}  // namespace
