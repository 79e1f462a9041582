#include "analysis/lateral_completion.h"

#include <algorithm>
#include <iterator>
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

std::optional<CPoint> place(const tagPOINTLAT& record, const Auxiliary& auxiliary) {
    if (record.Scale == 0) return std::nullopt;
    const CPoint& source = record.Point[auxiliary.source];
    const auto x = moved(source.x, auxiliary.left_mm / record.Scale);
    const auto y = moved(source.y, auxiliary.up_mm / record.Scale);
    if (!x || !y) return std::nullopt;
    return CPoint(*x, *y);
}

}  // namespace

// Kept: a point is placed from its landmark even where that is empty, too.
void complete_lateral_record(tagPOINTLAT& record) {
    for (const Auxiliary& auxiliary : auxiliaries) {
        CPoint& point = record.Point[auxiliary.slot];
        if (point == CPoint()) point = place(record, auxiliary).value_or(point);
    }
}

std::optional<CPoint> auxiliary_point(const tagPOINTLAT& record, int slot) {
    const auto auxiliary = std::ranges::find(auxiliaries, slot, &Auxiliary::slot);
    if (auxiliary == std::end(auxiliaries) || record.Point[auxiliary->source] == CPoint()) return std::nullopt;
    return place(record, *auxiliary);
}

}  // namespace tool
