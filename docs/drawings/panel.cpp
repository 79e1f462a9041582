#include "panel.h"

#include <CodePage.h>
#include <LandmarkTable.h>
#include <Tools.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <vector>

namespace constructions {
namespace {

constexpr double text_height = 15, caption_text_height = 13, head_length = 10;
constexpr const char *label_face = "Arial", *formula_face = "MS Gothic";

int rounded(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

double radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

CPointD around(CPointD center, double radius, double degrees) {
    return {center.x + radius * std::cos(radians(degrees)), center.y - radius * std::sin(radians(degrees))};
}

class Pen {
 public:
    Pen(CDC& dc, const Stroke& stroke) : dc_(dc) {
        const LOGBRUSH brush = {BS_SOLID, stroke.color, 0};
        const int style = PS_GEOMETRIC | PS_ENDCAP_FLAT | (stroke.dashed ? PS_DASH : PS_SOLID);
        pen_.CreatePen(style, rounded(stroke.width * Panel::device_pixels), &brush);
        before_ = dc_.SelectObject(&pen_);
    }
    ~Pen() { dc_.SelectObject(before_); }
    Pen(const Pen&) = delete;
    Pen& operator=(const Pen&) = delete;

 private:
    CDC& dc_;
    CPen pen_;
    CPen* before_;
};

}  // namespace

Panel::Panel(CDC& dc, int column, const Sample& sample, const View& view)
    : dc_(dc), left_(column * width), view_(view), sample_(sample) {
    if (sample_.film.Scale == 0) sample_.film.Scale = 0.25;  // a panel of 80 mm
}

void Panel::place(const char* name, CPoint at) {
    if (CPoint* slot = LandmarkTable::Point(sample_.kind, sample_.record(), LandmarkTable::Find(sample_.kind, name))) {
        *slot = at;
        return;
    }
    int slot = 0;
    while (slot < sample_.own_count && std::strcmp(sample_.film.UserName[slot], name) != 0) ++slot;
    if (slot == sample_.own_count) ++sample_.own_count;
    std::strncpy(sample_.film.UserName[slot], name, sizeof sample_.film.UserName[slot] - 1);
    sample_.film.UserPoint[slot] = at;
}

double Panel::value(std::string formula) {
    double values[100];
    int count = 0;
    return CCephCalc::Calc(sample_.kind, 0, formula.data(), values, &count, sample_.record(), nullptr, nullptr,
                           &sample_.own_count, sample_.own, 1, 0, 0, 1);
}

CPointD Panel::point(std::string expression) {
    return CCephCalc::Calc_Point(sample_.kind, expression.data(), sample_.record(), nullptr, nullptr,
                                 &sample_.own_count, sample_.own);
}

CPoint Panel::device(CPointD unit) const {
    return {rounded((unit.x + left_) * device_pixels), rounded(unit.y * device_pixels)};
}

void Panel::line(CPointD from, CPointD to, const Stroke& stroke, bool arrow) {
    const CPoint a = device(unit(from)), b = device(unit(to));
    if (arrow) {
        constexpr int head_at_end = 2;
        return CTools::DrawArrowLine(&dc_, a, b, head_length * device_pixels, head_at_end, 1, CPoint(0, 0),
                                     rounded(stroke.width * device_pixels), stroke.color, PS_SOLID);
    }
    const Pen pen(dc_, stroke);
    dc_.MoveTo(a.x, a.y);
    dc_.LineTo(b.x, b.y);
}

void Panel::through(CPointD a, CPointD b, const Stroke& stroke) {
    const CPointD step = b - a;
    const double last_x = view_.corner.x + width / view_.zoom, last_y = view_.corner.y + height / view_.zoom;
    double from = -1e9, to = 1e9;  // in steps from a
    const auto cut = [&](double at, double along, double first, double last) {
        if (along == 0) return;
        from = std::max(from, std::min((first - at) / along, (last - at) / along));
        to = std::min(to, std::max((first - at) / along, (last - at) / along));
    };
    cut(a.x, step.x, view_.corner.x, last_x);
    cut(a.y, step.y, view_.corner.y, last_y);
    line(a + step * from, a + step * to, stroke);
}

void Panel::curve(const std::vector<CPoint>& points, const Stroke& stroke, bool closed) {
    std::vector<CPoint> drawn;
    for (const CPoint& point : points) drawn.push_back(device(unit(CPointD(point))));
    CTools::Draw_SPLine(&dc_, CPoint(0, 0), 1, drawn.data(), static_cast<short>(drawn.size()), stroke.color,
                        static_cast<unsigned>(rounded(stroke.width * device_pixels)), closed, PS_SOLID, 0);
}

void Panel::arc(CPointD center, double radius, double from_deg, double sweep_deg, const Stroke& stroke, bool arrow) {
    const double head_deg =
        arrow ? std::copysign(head_length / (radius * view_.zoom) * 180 / std::numbers::pi, sweep_deg) : 0.0;
    constexpr int steps = 60;
    std::vector<POINT> points;
    for (int step = 0; step <= steps; ++step)
        points.push_back(device(unit(around(center, radius, from_deg + (sweep_deg - head_deg / 2) * step / steps))));
    {
        const Pen pen(dc_, stroke);
        dc_.Polyline(points.data(), static_cast<int>(points.size()));
    }
    if (!arrow) return;
    const double end = from_deg + sweep_deg;
    line(around(center, radius, end - head_deg), around(center, radius, end), stroke, true);
}

void Panel::right_angle(CPointD corner, CPointD along, CPointD other) {
    const auto toward = [&](CPointD to) {
        const CPointD way = to - corner;
        return way * (10 / view_.zoom / std::hypot(way.x, way.y));
    };
    const CPointD u = toward(along), v = toward(other);
    line(corner + u, corner + u + v, thin);
    line(corner + v, corner + u + v, thin);
}

void Panel::dot(CPointD at, COLORREF color) {
    CTools::Spot2(&dc_, device(unit(at)), 1, CPoint(0, 0), 4 * device_pixels, color, 0);
}

void Panel::ring(CPointD at) {
    const CPoint center = device(unit(at));
    CTools::Spot2(&dc_, center, 1, CPoint(0, 0), 6 * device_pixels, result, 0);
    CTools::Spot2(&dc_, center, 1, CPoint(0, 0), 3 * device_pixels, RGB(255, 255, 255), 0);
}

void Panel::write(CPointD unit, const std::string& utf8, double size, const char* face, COLORREF color, bool heavy) {
    CString text;
    if (!CodePage932FromUtf8(utf8.c_str(), &text)) return;
    LOGFONTA font = {};
    const int em = rounded(size * device_pixels);
    font.lfHeight = -em;
    font.lfWeight = heavy ? FW_BOLD : FW_NORMAL;
    std::strncpy(font.lfFaceName, face, sizeof font.lfFaceName - 1);
    CFont made;
    made.CreateFontIndirectA(&font);
    CFont* before = dc_.SelectObject(&made);
    dc_.SetBkMode(TRANSPARENT);
    dc_.SetTextAlign(TA_CENTER | TA_BASELINE);
    dc_.SetTextColor(color);
    const CPoint at = device(unit);
    dc_.TextOut(at.x, at.y + em * 3 / 8, text, text.GetLength());
    dc_.SelectObject(before);
}

void Panel::text(CPointD at, const std::string& utf8, COLORREF color, bool heavy) {
    write(unit(at), utf8, text_height, label_face, color, heavy);
}

void Panel::label(CPointD at, double dx, double dy, const std::string& utf8, COLORREF color, bool heavy) {
    write(unit(at) + CPointD(dx, dy), utf8, text_height, label_face, color, heavy);
}

void Panel::name(const char* landmark, double dx, double dy) {
    const CPointD at(sample_.at(landmark));
    dot(at);
    label(at, dx, dy, landmark, ink, false);
}

void Panel::caption(const std::string& formula, const std::string& outcome) {
    const CPoint first = device({0, height}), last = device({width, height + caption_height});
    CTools::Area_Make(&dc_, {first.x, first.y, last.x, last.y}, RGB(255, 255, 255));  // over what runs on below
    write({width / 2.0, height + 14.0}, formula, caption_text_height, formula_face, ink, false);
    write({width / 2.0, height + 36.0}, outcome, text_height, label_face, result, true);
}

double direction(CPointD from, CPointD to) {
    return std::atan2(from.y - to.y, to.x - from.x) * 180 / std::numbers::pi;
}

CPointD halfway(CPointD a, CPointD b) {
    return (a + b) * 0.5;
}

std::string number(double value, int decimals, bool with_sign) {
    char text[64];
    std::snprintf(text, sizeof text, with_sign ? "%+.*f" : "%.*f", decimals, value);
    return text;
}

void place(Panel& panel, NamedPlaces places) {
    for (const auto& [name, at] : places) panel.place(name, at);
}

CPointD at(Panel& panel, const char* landmark) {
    return panel.point('[' + std::string(landmark) + ']');
}

std::string measured(Panel& panel, const std::string& formula, const char* unit, bool with_sign) {
    const std::string text = number(panel.value(formula), 1, with_sign) + unit;
    panel.caption(formula, "= " + text);
    return text;
}

CPointD made(Panel& panel, const std::string& expression) {
    const CPointD point = panel.point(expression);
    panel.caption(expression, "= (" + number(point.x, 1) + ", " + number(point.y, 1) + ")");
    return point;
}

void draw_outlines(Panel& panel, const Sample& sample, std::initializer_list<const char*> names) {
    for (const Outline& outline : sample.outlines)
        if (names.size() == 0 || std::ranges::find(names, outline.name) != names.end())
            panel.curve(outline.points, outline_stroke, outline.closed);
}

}  // namespace constructions
