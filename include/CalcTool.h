// Plane geometry on landmarks, in image pixels with y pointing down.
//
// Points are whole (CPoint) or fractional (tagDPOINT*, CPointD*) in any mix; whole ones are converted exactly.
// Lengths are multiplied by `scale`, the size of a pixel in mm; lengths handed in are in mm and divided by it.
// Angles are degrees, clockwise on the screen where they turn a point. pi is 3.141592654, so that a right angle
// measures 90.00000001175155. Nothing is reported: degenerate input gives the value stated. Vertical, horizontal and
// parallel are told by exact equality; no other division by zero is guarded.
#pragma once

#include "AnyPoint.h"
#include "PointD.h"
#include "framework/export.h"

class TOOL_API CCalcTool {
 public:
    // --- Lengths and areas -----------------------------------------------------------------------------------
    // The distance from a to b in mm.
    static double Get_Length(AnyPoint a, AnyPoint b, double scale);
    static double Get_Lengthd(AnyPoint a, AnyPoint b, double scale);
    // Area of the triangle abc by Heron's rule, in mm².
    static double Get_Heron(AnyPoint a, AnyPoint b, AnyPoint c, double scale);
    // Suisen, perpendicular: the distance of p from the line a-b.
    static double Get_Suisen_Length(AnyPoint a, AnyPoint b, AnyPoint p, double scale);
    // Touei, projection: the length of c-d projected on the line a-b; 0.0 when a-b is vertical. With a mode other
    // than 0 it is negative when it runs against a-b.
    static double Get_Touei_Length(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, double scale, int mode);
    // Vartical, vertical: the distances of p from the axes a-c (*out1) and a-b (*out2); feet are whole pixels. Each is
    // positive when p's foot on the other axis lies inside that axis' segment. When a-b is horizontal, *out2's distance
    // is a.y - p.y with its sign; when a-c is horizontal, *out1's is a.x - p.x.
    static void Vartical_Length(CPoint a, CPoint b, CPoint c, CPoint p, double scale, double* out1, double* out2);

    // --- Angles ----------------------------------------------------------------------------------------------
    // The angle abc at b, 0 to 180; -1.0 when a side has no length.
    static double Angle_Cal(AnyPoint a, AnyPoint b, AnyPoint c);
    static double Angle_Cald(AnyPoint a, AnyPoint b, AnyPoint c);
    // The angle from a-b to c-d, -180 to 180; from (1, 0) to (0, 1) it is -90. Parallel lines give 0.0, opposite
    // ones too unless their vectors are exact negatives: 180.0.
    static double Get_Angle(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d);
    static double Get_Angled(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d);

    // --- Points on lines -------------------------------------------------------------------------------------
    // The middle of a-b. Between whole points it is whole, halves being cut toward a.
    static CPoint Get_Mpoint(const tagPOINT& a, const tagPOINT& b);
    static CPointD Get_Mpoint(AnyPoint a, AnyPoint b);
    static void Get_Mpointd(AnyPoint a, AnyPoint b, PointOut out);
    // The foot of the perpendicular from p on the line a-b; Get_Point rounds it (half is added, then cut toward zero).
    static CPoint Get_Point(CPoint a, CPoint b, CPoint p);
    static CPointD Get_Pointd(AnyPoint a, AnyPoint b, AnyPoint p);
    static void Get_Pointd(AnyPoint a, AnyPoint b, AnyPoint p, PointOut out);
    // The foot of the perpendicular from c on the parallel to a-b through d.
    static void Get_GPointd(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, PointOut out);
    // Where the lines a-b and c-d meet; (0, 0) when they are parallel.
    static void Pile_Pointd(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, PointOut out);
    static CPointD CrossPoint(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d);
    // The same with 1, or 0 when they are parallel; *out is then untouched, but for x = a.x when both are vertical.
    static int Get_Cross_Pointd(AnyPoint a, AnyPoint b, AnyPoint c, AnyPoint d, PointOut out);
    // The point r pixels from a toward b, the steps along x and y being cut to whole pixels.
    static CPoint Get_CirclePoint(CPoint a, CPoint b, double r);
    static void Get_CirclePointd(AnyPoint a, AnyPoint b, double r, PointOut out);

    // --- Points moved and turned -----------------------------------------------------------------------------
    // c moved by k times the vector from a to b, the step being cut to whole pixels.
    static CPoint V_Move(CPoint a, CPoint b, CPoint c, double k);
    // c moved by the vector from a to b.
    static void V_Moved(AnyPoint a, AnyPoint b, AnyPoint c, PointOut out);
    // The point dist from c in the direction from a to b turned by angle; Trans_Pointd starts at b, Trans_Pointd3
    // takes dist in pixels. Scale 0 gives b.
    static void Trans_Pointd(AnyPoint a, AnyPoint b, double dist, double angle, double scale, PointOut out);
    static void Trans_Pointd2(AnyPoint a, AnyPoint b, AnyPoint c, double dist, double angle, double scale,
                              PointOut out);
    static void Trans_Pointd3(AnyPoint a, AnyPoint b, AnyPoint c, double dist, double angle, PointOut out);
    // b turned about a by angle. Lot_Pointd3 and Lot_Pointdd, one function, put it |ab| * scale pixels from a, not
    // |ab|. Scale 0 gives a.
    static void Lot_Pointd2(AnyPoint a, AnyPoint b, double angle, double scale, PointOut out);
    static void Lot_Pointd3(AnyPoint a, AnyPoint b, double angle, double scale, PointOut out);
    static void Lot_Pointdd(AnyPoint a, AnyPoint b, double angle, double scale, PointOut out);
    // The point d1 along the axis a-b from a and d2 (mm) to its left as seen on the screen, the axis always
    // running rightward (downward when vertical). c is not used. Scale 0 gives (0, 0), else d1 0 gives a; with d2 0 a
    // negative d1 counts as positive.
    static void Vartical_Pointd(AnyPoint a, AnyPoint b, AnyPoint c, double scale, double d1, double d2, PointOut out);

    // --- Body weight -----------------------------------------------------------------------------------------
    // Expected weight in kg by age in years and height in cm; sex 1 male, any other value female. 0.0 under 6 months.
    static double Get_NormalWeight(double age, double height, int sex);
};
