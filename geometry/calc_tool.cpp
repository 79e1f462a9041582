#include "CalcTool.h"

#include <bit>

#include "geometry/angle.h"
#include "geometry/frame.h"
#include "geometry/length.h"
#include "geometry/line.h"
#include "geometry/normal_weight.h"
#include "geometry/pixel.h"
#include "geometry/translation.h"

namespace {

void put(PointOut out, tool::Vec2 point) {
    if (out.x) *out.x = point.x;
    if (out.y) *out.y = point.y;
}

// The same two doubles, without a call of the exported constructor.
CPointD point_d(tool::Vec2 point) {
    return std::bit_cast<CPointD>(point);
}

}  // namespace

double CCalcTool::Get_Length(AnyPoint a, AnyPoint b, double scale) {
    return tool::distance(a, b) * scale;
}
double CCalcTool::Get_Lengthd(AnyPoint a, AnyPoint b, double scale) {
    return tool::distance(a, b) * scale;
}
double CCalcTool::Get_Heron(AnyPoint a, AnyPoint b, AnyPoint c, double scale) {
    return tool::triangle_area(a, b, c, scale);
}
double CCalcTool::Get_Suisen_Length(AnyPoint a, AnyPoint b, AnyPoint p, double scale) {
    return tool::distance_to_line(p, {a, b}, scale);
}
double CCalcTool::Get_Touei_Length(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, double scale, int mode) {
    return tool::projected_length({a, b}, c, d, scale,
                                  mode == 0 ? tool::Sign::unsigned_length : tool::Sign::along_reference);
}
void CCalcTool::Vartical_Length(CPoint a, CPoint b, CPoint c, CPoint p, double scale, double* out1, double* out2) {
    const tool::FrameDistances distances = tool::distances_in_frame(a, b, c, p, scale);
    if (out1) *out1 = distances.to_ac;
    if (out2) *out2 = distances.to_ab;
}

double CCalcTool::Angle_Cal(AnyPoint a, AnyPoint b, AnyPoint c) {
    return tool::angle_at(a, b, c);
}
double CCalcTool::Angle_Cald(AnyPoint a, AnyPoint b, AnyPoint c) {
    return tool::angle_at(a, b, c);
}
double CCalcTool::Get_Angle(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d) {
    return tool::signed_angle({a, b}, {c, d});
}
double CCalcTool::Get_Angled(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d) {
    return tool::signed_angle({a, b}, {c, d});
}

CPoint CCalcTool::Get_Mpoint(const tagPOINT& a, const tagPOINT& b) {
    return tool::pixel_midpoint(a, b);
}
CPointD CCalcTool::Get_Mpoint(AnyPoint a, AnyPoint b) {
    return point_d(tool::midpoint(a, b));
}
void CCalcTool::Get_Mpointd(AnyPoint a, AnyPoint b, PointOut out) {
    put(out, tool::midpoint(a, b));
}
CPoint CCalcTool::Get_Point(CPoint a, CPoint b, CPoint p) {
    return tool::pixel_foot(a, b, p);
}
CPointD CCalcTool::Get_Pointd(AnyPoint a, AnyPoint b, AnyPoint p) {
    return point_d(tool::foot_of_perpendicular(p, {a, b}));
}
void CCalcTool::Get_Pointd(AnyPoint a, AnyPoint b, AnyPoint p, PointOut out) {
    put(out, tool::foot_of_perpendicular(p, {a, b}));
}
void CCalcTool::Get_GPointd(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, PointOut out) {
    put(out, tool::foot_on_parallel(c, {a, b}, d));
}
void CCalcTool::Pile_Pointd(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, PointOut out) {
    put(out, tool::intersection_or_empty({a, b}, {c, d}));
}
CPointD CCalcTool::CrossPoint(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d) {
    return point_d(tool::intersection_or_empty({a, b}, {c, d}));
}
int CCalcTool::Get_Cross_Pointd(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, PointOut out) {
    const tool::Line ab{a, b}, cd{c, d};
    if (ab.vertical() && out.x) *out.x = ab.a.x;  // Kept: written even when the lines then prove parallel.
    const auto shared = tool::intersection(ab, cd);
    if (!shared) return 0;
    put(out, *shared);
    return 1;
}
CPoint CCalcTool::Get_CirclePoint(CPoint a, CPoint b, double r) {
    return tool::pixel_toward(a, b, r);
}
void CCalcTool::Get_CirclePointd(AnyPoint a, AnyPoint b, double r, PointOut out) {
    put(out, tool::stepped_toward(a, b, r));
}

CPoint CCalcTool::V_Move(CPoint a, CPoint b, CPoint c, double k) {
    return tool::pixel_moved(a, b, c, k);
}
void CCalcTool::V_Moved(AnyPoint a, AnyPoint b, AnyPoint c, PointOut out) {
    put(out, tool::moved_by(a, b, c));
}
void CCalcTool::Trans_Pointd(AnyPoint a, AnyPoint b, double dist, double angle, double scale, PointOut out) {
    put(out, tool::translated_along(a, b, b, dist, angle, scale));
}
void CCalcTool::Trans_Pointd2(AnyPoint a, AnyPoint b, AnyPoint c, double dist, double angle, double scale,
                              PointOut out) {
    put(out, tool::translated_along(a, b, c, dist, angle, scale));
}
void CCalcTool::Trans_Pointd3(AnyPoint a, AnyPoint b, AnyPoint c, double dist, double angle, PointOut out) {
    put(out, tool::translated_along(a, b, c, dist, angle, 1.0));
}
void CCalcTool::Lot_Pointd2(AnyPoint a, AnyPoint b, double angle, double scale, PointOut out) {
    put(out, tool::turned_about(a, b, angle, scale));
}
void CCalcTool::Lot_Pointd3(AnyPoint a, AnyPoint b, double angle, double scale, PointOut out) {
    put(out, tool::turned_about_scaled(a, b, angle, scale));
}
void CCalcTool::Lot_Pointdd(AnyPoint a, AnyPoint b, double angle, double scale, PointOut out) {
    put(out, tool::turned_about_scaled(a, b, angle, scale));
}
void CCalcTool::Vartical_Pointd(AnyPoint a, AnyPoint b, AnyPoint, double scale, double d1, double d2, PointOut out) {
    put(out, tool::point_in_frame({a, b}, scale, d1, d2));
}

double CCalcTool::Get_NormalWeight(double age, double height, int sex) {
    return tool::normal_weight(age, height, sex);
}
