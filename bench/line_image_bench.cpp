// Line-image morphology on 400 drawn lines: the library against its plain form and OpenCV (one thread), copying the
// image as the limit, on the same seeded images of n x n pixels. Each run works on a fresh copy, made outside the
// clock.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "Tools.h"
#include "tests/util/plain_line_image.h"

#ifdef BENCH_OPENCV
#include <opencv2/imgproc.hpp>
#endif
#ifdef BENCH_OPENCV_THINNING
#include <opencv2/ximgproc.hpp>
#endif

namespace {

using plain::Pixels;

// Lines 1 to 9 pixels wide, from anywhere to anywhere.
Pixels lines(int side) {
    constexpr int count = 400, widest = 9;
    std::mt19937 random(5);
    std::uniform_int_distribution<int> place(0, side - 1), thickness(1, widest);
    Pixels image(static_cast<std::size_t>(side) * side);
    for (int i = 0; i < count; ++i) {
        const int x0 = place(random), y0 = place(random), x1 = place(random), y1 = place(random);
        const int width = thickness(random), steps = std::max({std::abs(x1 - x0), std::abs(y1 - y0), 1});
        for (int step = 0; step <= steps; ++step) {
            const int x = x0 + (x1 - x0) * step / steps, y = y0 + (y1 - y0) * step / steps;
            for (int row = y; row < std::min(y + width, side); ++row)
                std::memset(&image[static_cast<std::size_t>(row) * side + x], 255, std::min(width, side - x));
        }
    }
    return image;
}

template <class Work>
void measure(benchmark::State& state, Work work) {
    const int side = static_cast<int>(state.range(0));
    const Pixels drawn = lines(side);
    Pixels image;
    for (auto _ : state) {
        image = drawn;
        const auto start = std::chrono::steady_clock::now();
        work(image, side);
        benchmark::ClobberMemory();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->RangeMultiplier(2)->Range(256, 8192)->UseManualTime()->Unit(benchmark::kMillisecond);
}

void Copy_Memcpy(benchmark::State& state) {
    Pixels target(static_cast<std::size_t>(state.range(0)) * state.range(0));
    measure(state, [&](Pixels& image, int) { std::memcpy(target.data(), image.data(), image.size()); });
}
BENCHMARK(Copy_Memcpy)->Apply(sizes);

void Widen_Tool(benchmark::State& state) {
    measure(state, [](Pixels& image, int side) { CTools::Dira(image.data(), side, side, 8); });
}
BENCHMARK(Widen_Tool)->Apply(sizes);

void Widen_Plain(benchmark::State& state) {
    measure(state, [](Pixels& image, int side) { plain::Image(image, side, side).step(0, 255, 8); });
}
BENCHMARK(Widen_Plain)->Apply(sizes);

void Narrow_Tool(benchmark::State& state) {
    measure(state, [](Pixels& image, int side) { CTools::Eros(image.data(), side, side, 8); });
}
BENCHMARK(Narrow_Tool)->Apply(sizes);

void Narrow_Plain(benchmark::State& state) {
    measure(state, [](Pixels& image, int side) { plain::Image(image, side, side).step(255, 0, 8); });
}
BENCHMARK(Narrow_Plain)->Apply(sizes);

void Thin_Tool(benchmark::State& state) {
    measure(state, [](Pixels& image, int side) { CTools::Linear(nullptr, image.data(), side, side); });
}
BENCHMARK(Thin_Tool)->Apply(sizes);

void Thin_Plain(benchmark::State& state) {
    measure(state, [](Pixels& image, int side) { plain::Image(image, side, side).thin(); });
}
BENCHMARK(Thin_Plain)->Apply(sizes);

#ifdef BENCH_OPENCV
// Into a second image, as that is how OpenCV is quickest.
void Widen_OpenCV(benchmark::State& state) {
    cv::setNumThreads(1);
    cv::Mat wide;
    measure(state,
            [&](Pixels& image, int side) { cv::dilate(cv::Mat(side, side, CV_8U, image.data()), wide, cv::Mat()); });
}
BENCHMARK(Widen_OpenCV)->Apply(sizes);

void Narrow_OpenCV(benchmark::State& state) {
    cv::setNumThreads(1);
    cv::Mat narrow;
    measure(state,
            [&](Pixels& image, int side) { cv::erode(cv::Mat(side, side, CV_8U, image.data()), narrow, cv::Mat()); });
}
BENCHMARK(Narrow_OpenCV)->Apply(sizes);
#endif

#ifdef BENCH_OPENCV_THINNING
void Thin_OpenCV(benchmark::State& state) {
    cv::setNumThreads(1);
    cv::Mat thin;
    measure(state,
            [&](Pixels& image, int side) { cv::ximgproc::thinning(cv::Mat(side, side, CV_8U, image.data()), thin); });
}
BENCHMARK(Thin_OpenCV)->Apply(sizes);
#endif

}  // namespace
