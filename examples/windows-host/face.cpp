#include "face.h"

#include <CalcTool.h>
#include <LandmarkTable.h>
#include <Tools.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

namespace example {
namespace {

constexpr int lateral = 0;
constexpr COLORREF soft_tissue = RGB(170, 90, 40), bone = RGB(0, 0, 0), plane = RGB(0, 80, 200), dot = RGB(200, 0, 0);

struct Curve {
    const char* name;
    COLORREF color;
    std::initializer_list<const char*> landmarks;
};

const Curve curves[] = {
    {"soft tissue", soft_tissue, {"Gl", "N(s)", "TN", "SN", "TUL", "Sto", "TLL", "Vmi", "Pog(s)", "TC", "Me(s)"}},
    {"lower jaw", bone, {"Cd", "Ar", "Go(P)", "Go", "Go(L)", "Me", "Gn", "Pog", "PM", "B", "L1C"}},
    {"upper jaw", bone, {"PNS", "ANS", "A", "U1C"}},
};

CPoint* slot(tagPOINTLAT& face, const char* name) {
    return LandmarkTable::Point(lateral, &face, LandmarkTable::Find(lateral, name));
}

// Those of the names that have a landmark; (0, 0) is an empty slot.
std::vector<tagPOINT> placed(tagPOINTLAT& face, std::initializer_list<const char*> names) {
    std::vector<tagPOINT> points;
    for (const char* name : names) {
        const CPoint* const point = slot(face, name);
        if (point && !(*point == CPoint(0, 0))) points.push_back(*point);
    }
    return points;
}

}  // namespace

bool read_face(const char* path, tagPOINTLAT* face) {
    constexpr char scale_line[] = "# scale_mm_per_px=";
    bool found = false;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(scale_line)) face->Scale = std::strtod(line.c_str() + sizeof scale_line - 1, nullptr);
        const std::size_t comma = line.find(',');
        int x = 0, y = 0;
        if (comma == std::string::npos || std::sscanf(line.c_str() + comma, ",%d,%d", &x, &y) != 2) continue;
        CPoint* const point = slot(*face, line.substr(0, comma).c_str());
        if (point) *point = CPoint(x, y), found = true;
    }
    return found;
}

const char* name_of_hit(tagPOINTLAT& face, const View& view, CPoint at) {
    constexpr int near = 5;  // device pixels
    const int landmark =
        CCalcTool::GetPointIndex(face.Point, LandmarkTable::Count(lateral), at, near, view.zoom, view.offset);
    if (landmark >= 0) return LandmarkTable::Name(lateral, landmark);
    std::vector<std::vector<tagPOINT>> points;
    for (const Curve& curve : curves) points.push_back(placed(face, curve.landmarks));
    std::vector<tagTRACELINE> lines;
    for (const auto& own : points) lines.push_back({own.data(), static_cast<short>(own.size()), 0});
    const int line =
        CCalcTool::GetNearTraceLine(lines.data(), static_cast<int>(lines.size()), at, near, view.zoom, view.offset);
    return line < 0 ? nullptr : curves[line].name;
}

void draw_face(CDC& dc, tagPOINTLAT& face, const View& view) {
    for (const Curve& curve : curves) {
        const std::vector<tagPOINT> points = placed(face, curve.landmarks);
        CTools::Draw_SPLine(&dc, view.offset, view.zoom, points.data(), static_cast<short>(points.size()), curve.color,
                            1, 0, PS_SOLID, 0);
    }

    static constexpr const char* planes[][2] = {{"S", "N"},   {"Po", "Or"},  {"N", "A"},   {"N", "B"},
                                                {"Go", "Me"}, {"U1", "U1R"}, {"L1", "L1R"}};
    for (const auto& ends : planes) {
        const std::vector<tagPOINT> p = placed(face, {ends[0], ends[1]});
        if (p.size() == 2) CTools::Line_Make2(&dc, p[0], p[1], view.zoom, view.offset, 1, plane, PS_SOLID, 0);
    }
    for (int i = 0; i < LandmarkTable::Count(lateral); ++i) {
        const CPoint& point = *LandmarkTable::Point(lateral, &face, i);
        if (!(point == CPoint(0, 0))) CTools::Spot2(&dc, point, view.zoom, view.offset, 2, dot, 0);
    }
}

}  // namespace example
