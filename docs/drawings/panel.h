// One case of a construction: landmarks, what is made of them, and below it the formula with the engine's own result.
#pragma once

#include <CephCalc.h>
#include <framework/drawing.h>

#include <initializer_list>
#include <string>
#include <utility>

#include "sample.h"

namespace constructions {

// Colours that every kind of colour vision tells apart (Okabe M, Ito K: Color universal design, 2008). A result is also
// told by its weight, and a made point by its ring.
constexpr COLORREF ink = RGB(0, 0, 0), help = RGB(120, 120, 120), given = RGB(0, 114, 178), result = RGB(213, 94, 0);

struct Stroke {
    COLORREF color = help;
    double width = 1;  // as all lengths of a panel's own: 1/96 inch
    bool dashed = false;
};
constexpr Stroke thin{}, dashed{help, 1, true}, bold{result, 3}, side{given, 2}, axis{given, 2, false},
    outline_stroke{RGB(175, 175, 175), 1, false};

// What of the image a panel shows.
struct View {
    CPointD corner{0, 0};  // at the panel's upper left
    double zoom = 1;       // panel units for a pixel of the image
};

class Panel {
 public:
    static constexpr int width = 320, height = 240, caption_height = 52;
    static constexpr int device_pixels = 4;  // for each unit

    // Number `column` from the left; its landmarks begin with those of the sample.
    Panel(CDC& dc, int column, const Sample& sample = {}, const View& view = {});

    // --- The engine --------------------------------------------------------------------------------------------
    // Places a landmark; one whose name is in no table becomes one of the user's own.
    void place(const char* name, CPoint at);
    double value(std::string formula);
    CPointD point(std::string expression);

    // --- Marks, all in pixels of the image ---------------------------------------------------------------------
    void line(CPointD from, CPointD to, const Stroke& stroke, bool arrow = false);
    void through(CPointD a, CPointD b, const Stroke& stroke);  // from edge to edge
    void curve(const std::vector<CPoint>& points, const Stroke& stroke, bool closed);
    // Angles as seen: 0 to the right, 90 up.
    void arc(CPointD center, double radius, double from_deg, double sweep_deg, const Stroke& stroke, bool arrow);
    void right_angle(CPointD corner, CPointD along, CPointD other);
    void dot(CPointD at, COLORREF color = given);
    void ring(CPointD at);
    void text(CPointD at, const std::string& utf8, COLORREF color = ink, bool heavy = false);
    // A dot and, `dx` and `dy` units from it, the name.
    void name(const char* landmark, double dx, double dy);
    void label(CPointD at, double dx, double dy, const std::string& utf8, COLORREF color = result, bool heavy = true);

    void caption(const std::string& formula, const std::string& outcome);

 private:
    CPointD unit(CPointD p) const { return {(p.x - view_.corner.x) * view_.zoom, (p.y - view_.corner.y) * view_.zoom}; }
    CPoint device(CPointD unit) const;
    void write(CPointD unit, const std::string& utf8, double size, const char* face, COLORREF color, bool heavy);

    CDC& dc_;
    int left_;
    View view_;
    Sample sample_;
};

double direction(CPointD from, CPointD to);  // degrees as seen, -180 to 180
CPointD halfway(CPointD a, CPointD b);
std::string number(double value, int decimals, bool with_sign = false);

using NamedPlaces = std::initializer_list<std::pair<const char*, CPoint>>;
void place(Panel& panel, NamedPlaces places);
CPointD at(Panel& panel, const char* landmark);
// The value of a formula as its caption, and as a text for a label.
std::string measured(Panel& panel, const std::string& formula, const char* unit, bool with_sign);
// The point that an expression makes, and in the caption where it lies.
CPointD made(Panel& panel, const std::string& expression);
// All outlines where none is named.
void draw_outlines(Panel& panel, const Sample& sample, std::initializer_list<const char*> names = {});

}  // namespace constructions
