#include "panel.h"
#include "pictures.h"

namespace constructions {
namespace {

void draw_foot(CDC& dc, int column, CPoint from) {
    Panel panel(dc, column);
    place(panel, {{"P1", from}, {"P2", {60, 190}}, {"P3", {200, 150}}});
    const CPointD foot = made(panel, "vertical([P1],[P2],[P3])");
    panel.through(at(panel, "P2"), at(panel, "P3"), dashed);
    panel.line(at(panel, "P2"), at(panel, "P3"), side);
    panel.line(at(panel, "P1"), foot, bold);
    panel.right_angle(foot, at(panel, "P1"), at(panel, "P2"));
    panel.name("P1", 0, -16);
    panel.name("P2", 0, 20);
    panel.name("P3", 0, 20);
    panel.ring(foot);
    panel.label(foot, 8, 24, "foot");
}

void draw_bisector(CDC& dc, int column, int n) {
    Panel panel(dc, column);
    place(panel, {{"P1", {120, 150}}, {"P2", {300, 190}}, {"P3", {150, 20}}});
    const CPointD vertex = at(panel, "P1");
    const CPointD point = made(panel, "AngleBisector([P1],[P2],[P3]," + std::to_string(n) + ")");
    panel.line(vertex, at(panel, "P2"), side);
    panel.line(vertex, at(panel, "P3"), side);
    const double from = direction(vertex, at(panel, "P2")), sweep = direction(vertex, at(panel, "P3")) - from;
    panel.arc(vertex, 100, from, sweep, dashed, false);
    panel.label(vertex, 112, 44, "100 pixels", help, false);
    const CPointD other = panel.point("AngleBisector([P1],[P2],[P3],150)");
    panel.line(vertex, other, dashed);
    panel.line(vertex, point, bold);
    panel.label(point, 0, n > 0 ? -18 : 20, "n = " + number(n, 0));
    panel.name("P1", n > 0 ? -22 : 4, n > 0 ? 4 : 22);
    panel.name("P2", -4, 20);
    panel.name("P3", 20, 4);
    panel.ring(point);
}

void draw_extension(CDC& dc, int column, int mm) {
    Panel panel(dc, column);
    place(panel, {{"P1", {60, 190}}, {"P2", {180, 120}}});
    const CPointD point = made(panel, "extension([P1],[P2]," + std::to_string(mm) + ")");
    panel.line(at(panel, "P1"), at(panel, "P2"), side);
    panel.line(at(panel, "P2"), point, bold);
    panel.name("P1", -20, 4);
    panel.name("P2", 4, 22);
    panel.ring(point);
    panel.label(halfway(at(panel, "P2"), point), -22, -16, number(mm, 0, true) + " mm");
}

}  // namespace

void draw_middle(CDC& dc, const Samples&) {
    Panel panel(dc, 0);
    place(panel, {{"P1", {70, 180}}, {"P2", {250, 70}}});
    panel.line(at(panel, "P1"), at(panel, "P2"), thin);
    const CPointD middle = made(panel, "mid([P1],[P2])");
    panel.name("P1", -20, 4);
    panel.name("P2", 20, 4);
    panel.ring(middle);
    panel.label(middle, 14, 22, "mid");
}

void draw_feet(CDC& dc, const Samples&) {
    draw_foot(dc, 0, {95, 60});
    draw_foot(dc, 1, {240, 50});
}

void draw_crossing(CDC& dc, const Samples&) {
    Panel panel(dc, 0);
    place(panel, {{"P1", {40, 90}}, {"P2", {130, 105}}, {"P3", {160, 215}}, {"P4", {205, 165}}});
    const CPointD meeting = made(panel, "cross([P1],[P2],[P3],[P4])");
    panel.through(at(panel, "P1"), at(panel, "P2"), dashed);
    panel.through(at(panel, "P3"), at(panel, "P4"), dashed);
    panel.line(at(panel, "P1"), at(panel, "P2"), side);
    panel.line(at(panel, "P3"), at(panel, "P4"), side);
    for (const char* landmark : {"P1", "P2"}) panel.name(landmark, 0, -16);
    for (const char* landmark : {"P3", "P4"}) panel.name(landmark, -22, 0);
    panel.ring(meeting);
    panel.label(meeting, -14, -20, "cross");

    Panel parallel(dc, 1);
    place(parallel, {{"P1", {80, 120}}, {"P2", {240, 80}}, {"P3", {80, 190}}, {"P4", {240, 150}}});
    const CPointD none = made(parallel, "cross([P1],[P2],[P3],[P4])");
    parallel.line(at(parallel, "P1"), at(parallel, "P2"), side);
    parallel.line(at(parallel, "P3"), at(parallel, "P4"), side);
    for (const char* landmark : {"P1", "P2", "P3", "P4"}) parallel.name(landmark, 0, 20);
    parallel.ring(none + CPointD(8, 8));
    parallel.label(none, 78, 16, "parallel: (0, 0)");
}

void draw_bisectors(CDC& dc, const Samples&) {
    draw_bisector(dc, 0, 140);
    draw_bisector(dc, 1, -80);
}

void draw_extensions(CDC& dc, const Samples&) {
    draw_extension(dc, 0, 25);
    draw_extension(dc, 1, -20);
}

void draw_effective_a(CDC& dc, const Samples&) {
    Sample face;
    face.film.Scale = 0.15;
    Panel panel(dc, 0, face);
    place(panel, {{"N", {190, 20}}, {"A", {186, 110}}, {"U1R", {150, 118}}, {"U1", {218, 208}}, {"U1C", {214, 170}}});
    const CPointD point = made(panel, "EffectiveA()");
    const double lean = panel.value("angle2([N],[A],[U1R],[U1])");
    panel.through(at(panel, "N"), at(panel, "A"), dashed);
    panel.line(at(panel, "N"), at(panel, "A"), side, true);
    panel.line(at(panel, "U1R"), at(panel, "U1"), side, true);
    const CPointD meeting = panel.point("cross([N],[A],[U1R],[U1])");
    panel.arc(meeting, 40, direction(at(panel, "N"), at(panel, "A")), lean, bold, true);
    panel.label(meeting, -46, 50, "θ = " + number(lean, 1, true) + "°");
    panel.line(at(panel, "U1C"), point, bold, true);
    const CPointD foot = panel.point("vertical([U1C],[N],[A])");
    panel.right_angle(foot, at(panel, "N"), point);
    panel.label(point, -44, 6, number(panel.value("len([U1C],EffectiveA())"), 1) + " mm");
    panel.name("N", 14, 4);
    panel.name("A", 16, 0);
    panel.name("U1R", -24, 0);
    panel.name("U1", 20, 4);
    panel.name("U1C", 26, -4);
    panel.ring(point);
}

}  // namespace constructions
