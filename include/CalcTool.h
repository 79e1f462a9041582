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
#include "Records.h"
#include "framework/export.h"

// A traced outline as CTools::Draw_SPLine takes it; the points are the caller's.
struct tagTRACELINE {
    const tagPOINT* Points;
    short Count;
    unsigned char Closed;
};

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

    // --- What a click meets ------------------------------------------------------------------------------------
    // The meanings from here to Point_Make2 are this project's. `at` and `radius` are device pixels at a zoom and
    // scroll offset, with neither of them image pixels. The index of what is seen nearest, at most `radius` away; of
    // equally near ones the first, -1 for none and for a radius below 0.
    //
    // A landmark; (0, 0), which was not placed, is never met.
    static int GetPointIndex(const tagPOINT* points, int count, CPoint at, int radius, double zoom = 1.0,
                             CPoint offset = CPoint());
    // A traced line: the curve that CTools::Draw_SPLine draws, of two points a straight line, of fewer nothing.
    static int GetNearTraceLine(const tagTRACELINE* lines, int count, CPoint at, int radius, double zoom = 1.0,
                                CPoint offset = CPoint());
    // TR, trace: the image point that is seen at a device point. At a zoom of 1 or more what was drawn at the device
    // point is found exactly; below 1 it is the middle of the pixels that fall together there. (0, 0) for a zoom that
    // is not above 0.
    static CPoint Get_TRPoint(CPoint device, double zoom, CPoint offset);

    // --- Lateral records -----------------------------------------------------------------------------------------
    // Org, origin: the frame in which lateral films are laid over each other, as its origin and a point on its axis in
    // image pixels. ORG_CRANIAL_BASE: S, toward N. ORG_FRANKFORT: where Po-Or and the pterygoid vertical through PTV
    // cross, toward Or. ORG_PALATE: ANS, toward PNS. ORG_MANDIBLE: Me, toward Go. 1, or 0 and nothing written when a
    // landmark is missing, the axis has no length, or there is no such plane.
    enum { ORG_CRANIAL_BASE, ORG_FRANKFORT, ORG_PALATE, ORG_MANDIBLE };
    static int Get_Org(const tagPOINTLAT* record, int plane, CPointD* origin, CPointD* toward);
    // Profiro, profilogram: which of its parts the placed landmarks can draw. S-N; Po-Or; ANS-PNS; N-Pog; Ar-Go-Me-Pog;
    // U1-U1R; L1-L1R; UMo and LMo; N(s), TN, SN, TUL, TLL, Pog(s).
    enum {
        PROFIRO_CRANIAL_BASE = 1,
        PROFIRO_FRANKFORT = 2,
        PROFIRO_PALATE = 4,
        PROFIRO_FACIAL = 8,
        PROFIRO_MANDIBLE = 16,
        PROFIRO_UPPER_INCISOR = 32,
        PROFIRO_LOWER_INCISOR = 64,
        PROFIRO_MOLARS = 128,
        PROFIRO_SOFT_TISSUE = 256
    };
    static int Get_Profiro_Status(const tagPOINTLAT* record);
    // Fills slots that are empty with what can be constructed from placed landmarks, to the nearest pixel, and tells
    // how many. Go: the crossing of the tangents Ar-Go(P) and Me-Go(L), constructed gonion; Gn: of N-Pog and Me-Go(L),
    // gnathion after Ricketts; 54 to 58: as CCephCalc::Check_LatPoint, but never from an empty landmark. A point on the
    // bone itself is another: place it by hand where it is meant.
    static int Point_Make(tagPOINTLAT* record);
    // The same of one slot, unrounded and whatever the slot holds. 1, or 0 and nothing written when it can't be
    // constructed: a landmark is missing, the lines are parallel, or the point would be empty or beyond 32 bits.
    static int Point_Make2(const tagPOINTLAT* record, int slot, CPointD* out);

    // --- Body weight -----------------------------------------------------------------------------------------
    // Expected weight in kg by age in years and height in cm; sex 1 male, any other value female. 0.0 under 6 months.
    static double Get_NormalWeight(double age, double height, int sex);
};
