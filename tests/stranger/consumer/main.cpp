// Uses what a host uses, through the installed headers and the shared library alone.
#include <CalcTool.h>
#include <CephCalc.h>
#include <Framework.h>

#include <cstdio>

int main() {
    CString text;
    text.Format("%.6f", CCalcTool::Angle_Cal(CPoint(0, 10), CPoint(0, 0), CPoint(10, 0)));
    if (text != "90.000000") return std::printf("a right angle measures %s\n", LPCSTR(text)), 1;

    CPointD foot;
    CCalcTool::Get_Pointd(CPoint(0, 0), CPoint(8, 0), CPoint(3, 5), &foot);
    if (foot != CPointD(3, 0)) return std::printf("the foot lies at (%g, %g)\n", foot.x, foot.y), 1;

    // What the library throws can be caught here by its own type.
    try {
        CStringArray().GetAt(0);
    } catch (CInvalidArgException* outside) {
        outside->Delete();
        return CCephCalc::Str_Check("Calc2:") == 102 ? 0 : 1;
    }
    return 1;
}
