// Exported geometry calls against the formula that a user would write inline, and against Eigen where it is present.
// All run over the same seeded points. The rivals use the full pi and no special cases, so their results differ in
// the last digits.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

#include "CalcTool.h"

#if __has_include(<eigen3/Eigen/Geometry>)
#include <eigen3/Eigen/Geometry>
#define BENCH_WITH_EIGEN 1
#endif

namespace {

using Four = std::array<CPointD, 4>;

const std::vector<Four>& pictures() {
    static const std::vector<Four> made = [] {
        std::mt19937 random(20260101);
        std::uniform_real_distribution<double> pixels(0, 2000);
        std::vector<Four> fours(1024);
        for (Four& four : fours)
            for (CPointD& p : four) p = CPointD(pixels(random), pixels(random));
        return fours;
    }();
    return made;
}

// One pass over all pictures an iteration; items are calls.
template <class Call>
void run(benchmark::State& state, Call call) {
    for (auto _ : state)
        for (const Four& f : pictures()) benchmark::DoNotOptimize(call(f[0], f[1], f[2], f[3]));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(pictures().size()));
}

using P = const CPointD&;

double degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

void Length_Tool(benchmark::State& state) {
    run(state, [](P a, P b, P, P) { return CCalcTool::Get_Lengthd(&a, &b, 0.1); });
}
void Length_Inline(benchmark::State& state) {
    run(state, [](P a, P b, P, P) { return std::hypot(b.x - a.x, b.y - a.y) * 0.1; });
}

void Angle_Tool(benchmark::State& state) {
    run(state, [](P a, P b, P c, P) { return CCalcTool::Angle_Cald(&a, &b, &c); });
}
void Angle_Inline(benchmark::State& state) {
    run(state, [](P a, P b, P c, P) {
        const double ux = a.x - b.x, uy = a.y - b.y, vx = c.x - b.x, vy = c.y - b.y;
        return degrees(std::acos((ux * vx + uy * vy) / std::sqrt((ux * ux + uy * uy) * (vx * vx + vy * vy))));
    });
}

void SignedAngle_Tool(benchmark::State& state) {
    run(state, [](P a, P b, P c, P d) { return CCalcTool::Get_Angled(&a, &b, &c, &d); });
}
void SignedAngle_Inline(benchmark::State& state) {
    run(state, [](P a, P b, P c, P d) {
        const double ux = b.x - a.x, uy = b.y - a.y, vx = d.x - c.x, vy = d.y - c.y;
        return degrees(std::atan2(uy * vx - ux * vy, ux * vx + uy * vy));
    });
}

void Foot_Tool(benchmark::State& state) {
    run(state, [](P a, P b, P c, P) { return CCalcTool::Get_Pointd(&a, &b, &c); });
}
void Foot_Inline(benchmark::State& state) {
    run(state, [](P a, P b, P c, P) {
        const double ux = b.x - a.x, uy = b.y - a.y;
        const double t = ((c.x - a.x) * ux + (c.y - a.y) * uy) / (ux * ux + uy * uy);
        return std::array{a.x + t * ux, a.y + t * uy};
    });
}

void Intersection_Tool(benchmark::State& state) {
    run(state, [](P a, P b, P c, P d) { return CCalcTool::CrossPoint(&a, &b, &c, &d); });
}
void Intersection_Inline(benchmark::State& state) {
    run(state, [](P a, P b, P c, P d) {
        const double ux = b.x - a.x, uy = b.y - a.y, vx = d.x - c.x, vy = d.y - c.y;
        const double t = ((c.x - a.x) * vy - (c.y - a.y) * vx) / (ux * vy - uy * vx);
        return std::array{a.x + t * ux, a.y + t * uy};
    });
}

BENCHMARK(Length_Tool);
BENCHMARK(Length_Inline);
BENCHMARK(Angle_Tool);
BENCHMARK(Angle_Inline);
BENCHMARK(SignedAngle_Tool);
BENCHMARK(SignedAngle_Inline);
BENCHMARK(Foot_Tool);
BENCHMARK(Foot_Inline);
BENCHMARK(Intersection_Tool);
BENCHMARK(Intersection_Inline);

#ifdef BENCH_WITH_EIGEN
using Line = Eigen::Hyperplane<double, 2>;

Eigen::Vector2d vec(P p) {
    return {p.x, p.y};
}

void Length_Eigen(benchmark::State& state) {
    run(state, [](P a, P b, P, P) { return (vec(b) - vec(a)).norm() * 0.1; });
}
void Angle_Eigen(benchmark::State& state) {
    run(state, [](P a, P b, P c, P) {
        const Eigen::Vector2d u = (vec(a) - vec(b)).normalized(), v = (vec(c) - vec(b)).normalized();
        return degrees(std::acos(u.dot(v)));
    });
}
void SignedAngle_Eigen(benchmark::State& state) {
    run(state, [](P a, P b, P c, P d) {
        const Eigen::Vector2d u = vec(b) - vec(a), v = vec(d) - vec(c);
        return degrees(std::atan2(u.y() * v.x() - u.x() * v.y(), u.dot(v)));
    });
}
void Foot_Eigen(benchmark::State& state) {
    run(state, [](P a, P b, P c, P) { return Line::Through(vec(a), vec(b)).projection(vec(c)).eval(); });
}
void Intersection_Eigen(benchmark::State& state) {
    run(state,
        [](P a, P b, P c, P d) { return Line::Through(vec(a), vec(b)).intersection(Line::Through(vec(c), vec(d))); });
}

BENCHMARK(Length_Eigen);
BENCHMARK(Angle_Eigen);
BENCHMARK(SignedAngle_Eigen);
BENCHMARK(Foot_Eigen);
BENCHMARK(Intersection_Eigen);
#endif

}  // namespace
