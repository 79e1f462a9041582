// CTools: lines, construction lines, dots and shapes.
#include <optional>

#include "Tools.h"
#include "render/area.h"
#include "render/arrow.h"
#include "render/construction_line.h"
#include "render/line.h"
#include "render/mapping.h"
#include "render/pen.h"
#include "render/put_back.h"

using tool::drawing_pen, tool::image_pen;
using tool::PenRule, tool::Stroke, tool::View;

namespace {

void draw_line(CDC* dc, CPoint a, CPoint b, const Stroke& stroke, PenRule& pen_rule, int flip_y = 0) {
    if (!dc) return;
    if (flip_y) a = tool::flipped(a), b = tool::flipped(b);
    tool::draw_line(*dc, a, b, stroke, pen_rule);
}

// Draws in XOR when asked to, so that drawing the same again erases it.
template <class Draw>
void erasably(CDC* dc, int xor_mode, Draw draw) {
    if (!dc) return;
    std::optional<tool::RasterOperation> operation;
    if (xor_mode) operation.emplace(*dc, R2_XORPEN);
    draw();
}

bool placed(const tagPOINT& p) {
    return p.x != 0 || p.y != 0;
}

struct Pairs {
    const tagPOINT* points;
    int point_count;
    const int (*rows)[2];
    int row_count;
};

void draw_pairs(CDC* dc, const Pairs& pairs, const View& view, const Stroke& stroke, int xor_mode, PenRule& pen_rule) {
    if (!pairs.points || !pairs.rows) return;
    const auto known = [&](int i) { return i >= 0 && i < pairs.point_count && placed(pairs.points[i]); };
    erasably(dc, xor_mode, [&] {
        for (int row = 0; row < pairs.row_count; ++row) {
            const auto [a, b] = pairs.rows[row];
            if (!known(a) || !known(b)) continue;
            draw_line(dc, view.device(pairs.points[a]), view.device(pairs.points[b]), stroke, pen_rule);
        }
    });
}

void draw_construction_line(CDC* dc, const tool::Segment& segment, const View& view, CPoint* end, const Stroke& stroke,
                            int flip_y, PenRule& pen_rule) {
    if (end) *end = segment.right_end();
    if (stroke.width != 0)
        draw_line(dc, view.device(segment.first), view.device(segment.last), stroke, pen_rule, flip_y);
}

tool::Line line_through(const AnyPoint& a, const AnyPoint& b) {
    return {a, b};
}

}  // namespace

void CTools::Draw_Line(CDC* dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style, int flipY) {
    draw_line(dc, {x1, y1}, {x2, y2}, {width, color, style}, drawing_pen, flipY);
}

void CTools::Draw_Line_Image(CDC* dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style, int flipY) {
    draw_line(dc, {x1, y1}, {x2, y2}, {width, color, style}, image_pen, flipY);
}

void CTools::Line_Make2(CDC* dc, CPoint a, CPoint b, double zoom, CPoint offset, int width, COLORREF color, int style,
                        int xorMode) {
    const View view{zoom, offset};
    erasably(dc, xorMode, [&] { draw_line(dc, view.device(a), view.device(b), {width, color, style}, drawing_pen); });
}

void CTools::Line_Make2_Image(CDC* dc, CPoint a, CPoint b, double zoom, CPoint offset, int, COLORREF color, int style,
                              int xorMode, int imageSize) {
    const View view{zoom, offset};
    const Stroke stroke{tool::image_line_width(imageSize), color, style};
    erasably(dc, xorMode, [&] { draw_line(dc, view.device(a), view.device(b), stroke, image_pen); });
}

void CTools::Line_Maked(CDC* dc, tagDPOINT* a, tagDPOINT* b, double zoom, CPoint offset, int width, COLORREF color,
                        int style) {
    const View view{zoom, offset};
    draw_line(dc, view.device(AnyPoint(a)), view.device(AnyPoint(b)), {tool::truncated(width * zoom), color, style},
              drawing_pen);
}

void CTools::Draw_LineF(CDC* dc, CPoint offset, double zoom, CPoint a, CPoint b, int width, COLORREF color, int style) {
    const View view{zoom, offset};
    draw_line(dc, view.device(a), view.device(b), {width, color, style}, drawing_pen);
}

void CTools::Draw_LineF(CDC* dc, int x1, int y1, int x2, int y2, double zoom, CPoint offset, int width, COLORREF color,
                        int style) {
    const View view{zoom, offset};
    draw_line(dc, view.device(CPoint(x1, y1)), view.device(CPoint(x2, y2)), {width, color, style}, drawing_pen);
}

void CTools::Line_Pile(CDC* dc, const tagPOINT* points, int pointCount, const int (*pairs)[2], int pairCount,
                       double zoom, CPoint offset, int width, COLORREF color, int style, int xorMode) {
    draw_pairs(dc, {points, pointCount, pairs, pairCount}, {zoom, offset}, {width, color, style}, xorMode, drawing_pen);
}

void CTools::Line_Pile_Image(CDC* dc, const tagPOINT* points, int pointCount, const int (*pairs)[2], int pairCount,
                             double zoom, CPoint offset, int, COLORREF color, int style, int xorMode, int imageSize) {
    draw_pairs(dc, {points, pointCount, pairs, pairCount}, {zoom, offset},
               {tool::image_line_width(imageSize), color, style}, xorMode, image_pen);
}

void CTools::DrawArrowLine(CDC* dc, CPoint a, CPoint b, double headLength, int ends, double zoom, CPoint offset,
                           int width, COLORREF color, int style) {
    if (!dc) return;
    const View view{zoom, offset};
    draw_line(dc, view.device(a), view.device(b), {width, color, style}, drawing_pen);
    // Kept: heads stand where a and b lie unzoomed; callers that zoom pass device points.
    if (ends & 1) tool::fill_triangle(*dc, tool::arrow_head(b, a, headLength, 160.0), color);
    if (ends & 2) tool::fill_triangle(*dc, tool::arrow_head(a, b, headLength, -160.0), color);
}

void CTools::Parallel_Line(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy, COLORREF color,
                           CPoint* end, int width, double zoom, double, int style, int flipY) {
    draw_construction_line(dc, tool::parallel_through(p, line_through(a, b), r), {zoom, {offx, offy}}, end,
                           {width, color, style}, flipY, drawing_pen);
}

void CTools::Vartical_Line(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy, COLORREF color,
                           CPoint* end, int width, double zoom, double, int style, int flipY) {
    draw_construction_line(dc, tool::perpendicular_through(p, line_through(a, b), r), {zoom, {offx, offy}}, end,
                           {width, color, style}, flipY, drawing_pen);
}

void CTools::Parallel_Line_Image(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy,
                                 COLORREF color, CPoint* end, int width, double zoom, double, int style, int flipY) {
    draw_construction_line(dc, tool::parallel_through(p, line_through(a, b), r), {zoom, {offx, offy}}, end,
                           {width, color, style}, flipY, image_pen);
}

void CTools::Vartical_Line_Image(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy,
                                 COLORREF color, CPoint* end, int width, double zoom, double, int style, int flipY) {
    draw_construction_line(dc, tool::perpendicular_through(p, line_through(a, b), r), {zoom, {offx, offy}}, end,
                           {width, color, style}, flipY, image_pen);
}

void CTools::Spot(CDC* dc, CPoint p, double zoom, CPoint offset, short r, COLORREF color, int) {
    if (dc) tool::fill_spot(*dc, View{zoom, offset}.device(p, r), color);
}

void CTools::Spot2(CDC* dc, CPoint p, double zoom, CPoint offset, short r, COLORREF color, int) {
    if (!dc) return;
    const CPoint center = View{zoom, offset}.device(p);
    tool::fill_spot(*dc, View{1.0, {0, 0}}.device(center, r), color);
}

void CTools::DrawRect(CDC* dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style, int flipY) {
    const CRect r(x1, y1, x2, y2);
    if (dc) tool::draw_rectangle(*dc, flipY ? tool::flipped(r) : r, {width, color, style});
}

void CTools::Rect_Make(CDC* dc, CRect r, int width, COLORREF color, int style) {
    if (dc) tool::draw_rectangle(*dc, r, {width, color, style});
}

void CTools::Rect_Make(CDC* dc, tagRECT r, double zoom, CPoint offset, int width, COLORREF color, int style,
                       int xorMode) {
    erasably(dc, xorMode, [&] { tool::draw_rectangle(*dc, View{zoom, offset}.device(r), {width, color, style}); });
}

void CTools::Ellipse(CDC* dc, tagRECT r, int width, COLORREF color, int style) {
    if (dc) tool::draw_ellipse(*dc, r, {width, color, style});
}

void CTools::EllipseF(CDC* dc, tagRECT r, double zoom, CPoint offset, int width, COLORREF color, int style) {
    if (dc) tool::draw_ellipse(*dc, View{zoom, offset}.device(r), {width, color, style});
}

void CTools::Draw_Circle(CDC* dc, CPoint center, double radius, double zoom, CPoint offset, int width, COLORREF color,
                         int style) {
    if (dc) tool::draw_ellipse(*dc, View{zoom, offset}.device(center, radius), {width, color, style});
}

void CTools::Arc_MakeF(CDC* dc, tagRECT r, CPoint from, CPoint to, double zoom, CPoint offset, int width,
                       COLORREF color, int style) {
    const View view{zoom, offset};
    if (dc) tool::draw_arc(*dc, view.device(r), view.device(from), view.device(to), {width, color, style});
}

void CTools::Rect_MakeEx(CDC* dc, tagRECT r, double zoom, CPoint offset, int width, COLORREF color, int style,
                         COLORREF fill) {
    if (dc) tool::fill_rectangle(*dc, View{zoom, offset}.device(r), {width, color, style}, fill);
}

void CTools::Frame_Make(CDC* dc, tagRECT r, COLORREF color) {
    if (dc) tool::frame_rectangle(*dc, r, color);
}

void CTools::Area_Make(CDC* dc, tagRECT r, COLORREF color) {
    if (dc) tool::fill_rectangle(*dc, r, color);
}

void CTools::Area_MakeF(CDC* dc, tagRECT r, double zoom, CPoint offset, COLORREF color) {
    if (dc) tool::fill_rectangle(*dc, View{zoom, offset}.device(r), color);
}

void CTools::Line_MakeH(HDC dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style) {
    draw_line(CDC::FromHandle(dc), {x1, y1}, {x2, y2}, {width, color, style}, drawing_pen);
}

void CTools::Box_MakeH(HDC dc, tagRECT r, int width, COLORREF color, int style) {
    if (CDC* const surface = CDC::FromHandle(dc)) tool::draw_rectangle(*surface, r, {width, color, style});
}

void CTools::P_Line(CDC* dc, int ox, int oy, double zx, double zy, int x1, int y1, int x2, int y2, int width,
                    COLORREF color, int style) {
    const tool::Page page{{ox, oy}, zx, zy};
    draw_line(dc, page.device({x1, y1}), page.device({x2, y2}), {width, color, style}, drawing_pen);
}

void CTools::P_Area(CDC* dc, int ox, int oy, double zx, double zy, int x1, int y1, int x2, int y2, COLORREF color) {
    const tool::Page page{{ox, oy}, zx, zy};
    if (dc) tool::fill_rectangle(*dc, View::between(page.device({x1, y1}), page.device({x2, y2})), color);
}
