// CTools: smooth curves.
#include <algorithm>

#include "Tools.h"
#include "render/outline.h"
#include "render/spline.h"

namespace {

template <class Point>
std::span<const Point> points_of(const Point* points, short count) {
    return points && count > 0 ? std::span(points, static_cast<std::size_t>(count)) : std::span<const Point>();
}

}  // namespace

void CTools::SplineCal(double* outX, double* outY, double x0, double y0, double x1, double y1, double x2, double y2,
                       double x3, double y3, double t, CRect clip, int kind) {
    const tool::Controls controls{{x0, y0}, {x1, y1}, {x2, y2}, {x3, y3}};
    tool::Vec2 p = kind == 0 ? tool::catmull_rom(controls, t) : tool::b_spline(controls, t);
    if (!clip.IsRectEmpty()) {
        p.x = std::clamp<double>(p.x, clip.left, clip.right);
        p.y = std::clamp<double>(p.y, clip.top, clip.bottom);
    }
    if (outX) *outX = p.x;
    if (outY) *outY = p.y;
}

void CTools::Draw_SPLine(CDC* dc, CPoint offset, double zoom, const tagPOINT* pts, short n, COLORREF color,
                         unsigned int width, unsigned char closed, int style, int flipY) {
    if (dc)
        tool::draw_outline(*dc, points_of(pts, n), closed != 0, {zoom, offset}, flipY != 0,
                           {static_cast<int>(width), color, style}, tool::drawing_pen);
}

void CTools::Draw_SPLine_Image(CDC* dc, CPoint offset, double zoom, const tagPOINT* pts, short n, COLORREF color,
                               unsigned int width, unsigned char closed, int style, int flipY) {
    if (dc)
        tool::draw_outline(*dc, points_of(pts, n), closed != 0, {zoom, offset}, flipY != 0,
                           {static_cast<int>(width), color, style}, tool::image_pen);
}

double CTools::Get_SPLineLength(const tagPOINT* pts, short n, int from, int to, unsigned char closed, double scale) {
    return tool::outline_length(points_of(pts, n), closed != 0, from, to) * scale;
}

double CTools::Get_SPLineLengthd(const tagDPOINT* pts, short n, int from, int to, unsigned char closed, double scale) {
    return tool::outline_length(points_of(pts, n), closed != 0, from, to) * scale;
}
