#include "analysis/cast_points.h"

namespace tool {
namespace {

// Teeth by FDI number, from the right first molar to the left one, "m" mesial and "d" distal.
constexpr std::string_view names[] = {
    "16m",  "16d",  "15m", "15d",  "14m",  "14d",  "13m",  "13d", "12m",  "12d",  "11m", "11d",  // upper right
    "21m",  "21d",  "22m", "22d",  "23m",  "23d",  "24m",  "24d", "25m",  "25d",  "26m", "26d",  // upper left
    "46m",  "46d",  "45m", "45d",  "44m",  "44d",  "43m",  "43d", "42m",  "42d",  "41m", "41d",  // lower right
    "31m",  "31d",  "32m", "32d",  "33m",  "33d",  "34m",  "34d", "35m",  "35d",  "36m", "36d",  // lower left
    "UCWR", "UCWL", "UCF", "UCRR", "UCRL", "UBWR", "UBWL", "UBF", "UBRR", "UBRL",                // upper arch
    "LCWR", "LCWL", "LCF", "LCRR", "LCRL", "LBWR", "LBWL", "LBF", "LBRR", "LBRL"};               // lower arch
static_assert(std::size(names) == cast_point_count);

}  // namespace

std::string_view cast_point_name(int slot) {
    return names[slot];
}

CPoint& cast_point(tagPOINTMO& record, int slot) {
    constexpr int tooth_points = 2 * teeth_in_arch;
    if (slot < 2 * tooth_points) {
        tagTOOTH& tooth = (slot < tooth_points ? record.Upper : record.Lower).Tooth[slot % tooth_points / 2];
        return slot % 2 == 0 ? tooth.Mesial : tooth.Distal;
    }
    slot -= 2 * tooth_points;
    tagARCH& arch = slot < 2 * arch_points ? record.Upper : record.Lower;
    const bool basal = slot / arch_points % 2 == 1;
    const int point = slot % arch_points;
    if (point < 2) return basal ? arch.BasalWidth[point] : arch.CoronalWidth[point];
    if (point == 2) return basal ? arch.BasalFront : arch.CoronalFront;
    return basal ? arch.BasalRear[point - 3] : arch.CoronalRear[point - 3];
}

}  // namespace tool
