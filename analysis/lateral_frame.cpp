#include "analysis/lateral_frame.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string_view>

#include "CalcTool.h"
#include "analysis/landmark_names.h"
#include "analysis/lateral_completion.h"
#include "geometry/line.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr int lateral = 0;

std::optional<Vec2> placed(const tagPOINTLAT& record, std::string_view name) {
    const std::optional<int> slot = landmark_slot(lateral, name);
    if (!slot || record.Point[*slot] == CPoint()) return std::nullopt;
    return Vec2(record.Point[*slot]);
}

struct Part {
    int bit;
    std::initializer_list<std::string_view> landmarks;
};

const Part profilogram[] = {
    {CCalcTool::PROFIRO_CRANIAL_BASE, {"S", "N"}},
    {CCalcTool::PROFIRO_FRANKFORT, {"Po", "Or"}},
    {CCalcTool::PROFIRO_PALATE, {"ANS", "PNS"}},
    {CCalcTool::PROFIRO_FACIAL, {"N", "Pog"}},
    {CCalcTool::PROFIRO_MANDIBLE, {"Ar", "Go", "Me", "Pog"}},
    {CCalcTool::PROFIRO_UPPER_INCISOR, {"U1", "U1R"}},
    {CCalcTool::PROFIRO_LOWER_INCISOR, {"L1", "L1R"}},
    {CCalcTool::PROFIRO_MOLARS, {"UMo", "LMo"}},
    {CCalcTool::PROFIRO_SOFT_TISSUE, {"N(s)", "TN", "SN", "TUL", "TLL", "Pog(s)"}},
};

std::optional<Vec2> crossing(const tagPOINTLAT& record, std::string_view a, std::string_view b, std::string_view c,
                             std::string_view d) {
    const auto from = placed(record, a), to = placed(record, b), other_from = placed(record, c),
               other_to = placed(record, d);
    if (!from || !to || !other_from || !other_to || *from == *to || *other_from == *other_to) return std::nullopt;
    return intersection({*from, *to}, {*other_from, *other_to});
}

std::optional<Vec2> construction(const tagPOINTLAT& record, int slot) {
    if (slot == landmark_slot(lateral, "Go")) return crossing(record, "Ar", "Go(P)", "Me", "Go(L)");
    if (slot == landmark_slot(lateral, "Gn")) return crossing(record, "N", "Pog", "Me", "Go(L)");
    const std::optional<CPoint> auxiliary = auxiliary_point(record, slot);
    if (auxiliary) return Vec2(*auxiliary);
    return std::nullopt;
}

}  // namespace

std::optional<Axis> lateral_axis(const tagPOINTLAT& record, int plane) {
    constexpr std::string_view ends[][2] = {{"S", "N"}, {"Po", "Or"}, {"ANS", "PNS"}, {"Me", "Go"}};  // by ORG_ number
    if (plane < 0 || plane >= static_cast<int>(std::size(ends))) return std::nullopt;
    auto origin = placed(record, ends[plane][0]);
    const auto toward = placed(record, ends[plane][1]);
    if (!origin || !toward || *origin == *toward) return std::nullopt;
    if (plane == CCalcTool::ORG_FRANKFORT) {
        const auto pterygoid = placed(record, "PTV");
        if (!pterygoid) return std::nullopt;
        origin = foot_of_perpendicular(*pterygoid, {*origin, *toward});
        if (*origin == *toward) return std::nullopt;
    }
    return Axis{*origin, *toward};
}

int profilogram_parts(const tagPOINTLAT& record) {
    int parts = 0;
    for (const Part& part : profilogram)
        if (std::ranges::all_of(part.landmarks,
                                [&](std::string_view name) { return placed(record, name).has_value(); }))
            parts |= part.bit;
    return parts;
}

CPoint nearest_pixel(Vec2 point) {
    return {truncated(std::floor(point.x + 0.5)), truncated(std::floor(point.y + 0.5))};
}

std::optional<Vec2> constructed_point(const tagPOINTLAT& record, int slot) {
    const std::optional<Vec2> point = construction(record, slot);
    if (!point || !fits_32_bits(point->x + 0.5) || !fits_32_bits(point->y + 0.5)) return std::nullopt;
    return nearest_pixel(*point) == CPoint() ? std::nullopt : point;
}

}  // namespace tool
