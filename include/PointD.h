// Points with double coordinates, in image pixels (fractions allowed), x to the right, y down.
//
// The empty point is exactly (0, 0). There is no validity flag: a landmark that really lies at the origin counts as
// absent.
#pragma once

#include "framework/export.h"
#include "framework/plane.h"

// The plain record that CCalcTool's functions write their results to.
struct tagDPOINT {
    double x, y;
};

// The same two doubles with arithmetic. Laid out as tagDPOINT, field for field.
// Comparisons are exact, without tolerance; a NaN coordinate makes points unequal. They return int 1 or 0.
class TOOL_API CPointD {
 public:
    double x, y;

    CPointD();
    CPointD(const double& x, const double& y);
    CPointD(const CPointD&) = default;
    CPointD(const CPoint& p);

    CPointD& operator=(const CPointD&) = default;
    CPointD& operator+=(const CPointD& o);
    CPointD& operator+=(const CPoint& o);
    CPointD& operator-=(const CPointD& o);
    CPointD& operator-=(const CPoint& o);
    CPointD& operator*=(const double& k);
    CPointD& operator/=(const double& k);  // by 0: infinities or NaN

    CPointD operator+(const CPointD& o) const;
    CPointD operator+(const CPoint& o) const;
    CPointD operator-(const CPointD& o) const;
    CPointD operator-(const CPoint& o) const;
    CPointD operator*(const double& k) const;
    CPointD operator/(const double& k) const;  // by 0: infinities or NaN

    int operator==(const CPointD& o) const;
    int operator==(const CPoint& o) const;
    int operator!=(const CPointD& o) const;
    int operator!=(const CPoint& o) const;

    CPointD& SetPointEmpty();
    int IsPointNull() const;  // -0.0 counts as 0
    tagDPOINT ToDPOINT() const;
    CPointD& FromDPOINT(tagDPOINT p);
};
