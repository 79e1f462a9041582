// CCalcTool: frames and constructed points of a lateral record.
#include "CalcTool.h"
#include "analysis/lateral_frame.h"

namespace {

void put(CPointD* out, tool::Vec2 point) {
    if (out) *out = CPointD(point.x, point.y);
}

}  // namespace

int CCalcTool::Get_Org(const tagPOINTLAT* record, int plane, CPointD* origin, CPointD* toward) {
    const auto axis = record ? tool::lateral_axis(*record, plane) : std::nullopt;
    if (!axis) return 0;
    put(origin, axis->origin);
    put(toward, axis->toward);
    return 1;
}

int CCalcTool::Get_Profiro_Status(const tagPOINTLAT* record) {
    return record ? tool::profilogram_parts(*record) : 0;
}

int CCalcTool::Point_Make(tagPOINTLAT* record) {
    if (!record) return 0;
    int made = 0;
    for (int slot = 0; slot < LAT_POINT_COUNT; ++slot) {
        CPointD point;
        CPoint& stored = record->Point[slot];
        if (stored != CPoint() || !Point_Make2(record, slot, &point)) continue;
        stored = tool::nearest_pixel(tool::Vec2(point));
        ++made;
    }
    return made;
}

int CCalcTool::Point_Make2(const tagPOINTLAT* record, int slot, CPointD* out) {
    const auto point = record ? tool::constructed_point(*record, slot) : std::nullopt;
    if (point) put(out, *point);
    return point ? 1 : 0;
}
