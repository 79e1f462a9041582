#include "analysis/lateral_completion.h"

#include <optional>

#include "platform/numbers.h"

namespace tool {
namespace {

struct Auxiliary {
    int slot, source;
    double left_mm, up_mm;
};

constexpr Auxiliary auxiliaries[] = {
    {54, 34, 3.0, -5.0},   // LMo(D)
    {55, 43, -3.0, 10.0},  // CdE
    {56, 25, -0.0, -5.0},  // Ba
    {57, 23, -5.0, -3.0},  // Cd
    {58, 48, 2.0, -2.0},   // Me(s)
};

// Kept: the offset is cut toward zero, not rounded.
std::optional<LONG> moved(LONG from, double offset_px) {
    if (!fits_32_bits(offset_px)) return std::nullopt;
    const std::int64_t to = std::int64_t{from} - truncated(offset_px);
    if (to != static_cast<LONG>(to)) return std::nullopt;
    return static_cast<LONG>(to);
}

}  // namespace

void complete_lateral_record(tagPOINTLAT& record) {
    for (const Auxiliary& auxiliary : auxiliaries) {
        CPoint& point = record.Point[auxiliary.slot];
        const CPoint& source = record.Point[auxiliary.source];
        if (point != CPoint() || record.Scale == 0) continue;
        const auto x = moved(source.x, auxiliary.left_mm / record.Scale);
        const auto y = moved(source.y, auxiliary.up_mm / record.Scale);
        if (x && y) point = CPoint(*x, *y);
    }
}

}  // namespace tool
