// The correctly rounded functions against the C library's, over the same seeded arguments in the same run. "Latency"
// feeds each result into the next argument, so that nothing overlaps.
#include "platform/arithmetic.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

struct Range {
    double from, to;
};

std::vector<double> arguments(Range range) {
    std::mt19937_64 random(20260101);
    std::uniform_real_distribution<double> uniform(range.from, range.to);
    std::vector<double> made(4096);
    for (double& x : made) x = uniform(random);
    return made;
}

template <double (*function)(double)>
void throughput(benchmark::State& state, Range range) {
    const std::vector<double> xs = arguments(range);
    for (auto _ : state)
        for (const double x : xs) benchmark::DoNotOptimize(function(x));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(xs.size()));
}

template <double (*function)(double)>
void latency(benchmark::State& state, Range range) {
    const std::vector<double> xs = arguments(range);
    double last = 0;
    for (auto _ : state)
        for (const double x : xs) last = function(x + last * 0);
    benchmark::DoNotOptimize(last);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(xs.size()));
}

template <double (*ours)(double), double (*theirs)(double)>
int compare(const std::string& name, Range range) {
    benchmark::RegisterBenchmark((name + "_Tool").c_str(), throughput<ours>, range);
    benchmark::RegisterBenchmark((name + "_CLibrary").c_str(), throughput<theirs>, range);
    benchmark::RegisterBenchmark((name + "_Latency_Tool").c_str(), latency<ours>, range);
    benchmark::RegisterBenchmark((name + "_Latency_CLibrary").c_str(), latency<theirs>, range);
    return 0;
}

[[maybe_unused]] const int registered[] = {
    compare<tool::acos, std::acos>("Acos", {-1, 1}),
    compare<tool::acos, std::acos>("AcosNearly1", {0.95, 1}),
    compare<tool::atan, std::atan>("Atan", {-2, 2}),
    compare<tool::atan, std::atan>("AtanSteep", {-200, 200}),
    compare<tool::sin, std::sin>("Sin", {-6.3, 6.3}),
    compare<tool::sin, std::sin>("SinManyTurns", {-10000, 10000}),
    compare<tool::sin, std::sin>("SinLarge", {1e9, 1e18}),
    compare<tool::cos, std::cos>("Cos", {-6.3, 6.3}),
    compare<tool::cos, std::cos>("CosManyTurns", {-10000, 10000}),
    compare<tool::cos, std::cos>("CosLarge", {1e9, 1e18}),
    compare<tool::exp, std::exp>("Exp", {-20, 20}),
    compare<tool::exp, std::exp>("ExpAll", {-700, 700}),
    compare<tool::exp, std::exp>("ExpDenormal", {-744, -709}),
};

}  // namespace
