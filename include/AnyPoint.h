// The point arguments of CCalcTool: each accepts every point kind, so that one function serves every mix of them.
#pragma once

#include "PointD.h"
#include "framework/plane.h"

// A point handed in: CPoint or POINT by value, tagDPOINT or CPointD by address. A null address is the empty point
// (0, 0). Values are copied, so that a result may go into an argument.
struct AnyPoint {
    double x = 0.0, y = 0.0;

    AnyPoint(const tagPOINT& p) : x(p.x), y(p.y) {}
    AnyPoint(const tagDPOINT* p) { take(p); }
    AnyPoint(const CPointD* p) { take(p); }

 private:
    template <class P>
    void take(const P* p) {
        if (p) x = p->x, y = p->y;
    }
};

// The caller's own record that a result goes to: tagDPOINT or CPointD by address. A null address takes nothing.
struct PointOut {
    double *x = nullptr, *y = nullptr;

    PointOut(tagDPOINT* p) { lead_to(p); }
    PointOut(CPointD* p) { lead_to(p); }

 private:
    template <class P>
    void lead_to(P* p) {
        if (p) x = &p->x, y = &p->y;
    }
};
