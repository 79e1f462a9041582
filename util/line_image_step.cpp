// Widening and narrowing: one sweep, as each is the other with line and paper exchanged.
#include "util/line_image.h"
#include "util/line_image_sweep.h"

namespace tool {
namespace {

constexpr int chunk = 16;  // every 64-bit processor has registers of that size
[[maybe_unused]] constexpr int wide_chunk = 32;

template <std::uint8_t to>
void step(LineImage image, Neighbours neighbours) {
    if (image.width < 3 || image.height < 3) return;
    if (image.width < chunk + 2) return sweep<1, to>(image, neighbours);
#ifdef TOOL_AVX2
    if (image.width >= wide_chunk + 2 && __builtin_cpu_supports("avx2"))
        return to == line ? widen_with_avx2(image, neighbours) : narrow_with_avx2(image, neighbours);
#endif
    sweep<chunk, to>(image, neighbours);
}

}  // namespace

void widen_lines(LineImage image, Neighbours neighbours) {
    step<line>(image, neighbours);
}

void narrow_lines(LineImage image, Neighbours neighbours) {
    step<paper>(image, neighbours);
}

}  // namespace tool
