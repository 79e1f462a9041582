// CCalcTool: what a click meets.
#include "CalcTool.h"
#include "render/hit.h"

namespace {

template <class T>
std::span<const T> span_of(const T* items, int count) {
    return items && count > 0 ? std::span(items, static_cast<std::size_t>(count)) : std::span<const T>();
}

}  // namespace

int CCalcTool::GetPointIndex(const tagPOINT* points, int count, CPoint at, int radius, double zoom, CPoint offset) {
    return tool::nearest_point(span_of(points, count), at, radius, {zoom, offset}).value_or(-1);
}

int CCalcTool::GetNearTraceLine(const tagTRACELINE* lines, int count, CPoint at, int radius, double zoom,
                                CPoint offset) {
    return tool::nearest_outline(span_of(lines, count), at, radius, {zoom, offset}).value_or(-1);
}

CPoint CCalcTool::Get_TRPoint(CPoint device, double zoom, CPoint offset) {
    return tool::View{zoom, offset}.image(device);
}
