#include <cmath>
#include <utility>

#include "panel.h"
#include "pictures.h"

namespace constructions {
namespace {

void draw_length(CDC& dc, int column, const std::string& formula, CPoint first, CPoint second, bool with_sign) {
    Panel panel(dc, column);
    place(panel, {{"P1", first}, {"P2", second}});
    panel.line(at(panel, "P1"), at(panel, "P2"), bold, with_sign);
    const CPointD way = at(panel, "P2") - at(panel, "P1");
    const CPointD aside = CPointD(way.y, -way.x) * ((way.x < 0 ? -24 : 24) / std::hypot(way.x, way.y));
    panel.label(halfway(at(panel, "P1"), at(panel, "P2")), aside.x * 1.9, aside.y,
                measured(panel, formula, " mm", with_sign));
    const double right = first.x < second.x ? 1 : -1;
    panel.name("P1", -18 * right, 4);
    panel.name("P2", 18 * right, 4);
}

void draw_corner(CDC& dc, int column, const std::string& formula, NamedPlaces places) {
    Panel panel(dc, column);
    place(panel, places);
    const CPointD corner = at(panel, "P2");
    panel.line(corner, at(panel, "P1"), side);
    panel.line(corner, at(panel, "P3"), side);
    const std::string text = measured(panel, formula, "°", false);
    const double from = direction(corner, at(panel, "P1"));
    const double turn = std::remainder(direction(corner, at(panel, "P3")) - from, 360);
    const double sweep = std::copysign(panel.value(formula), turn);
    panel.arc(corner, 52, from, sweep, bold, false);
    const double middle = (from + sweep / 2) * 3.14159265 / 180;
    panel.label(corner, 84 * std::cos(middle), -80 * std::sin(middle), text);
    panel.name("P1", 0, -18);
    panel.name("P2", -10, 20);
    panel.name("P3", 20, 8);
}

void draw_between(CDC& dc, int column, const std::string& formula, bool first_turned, bool second_turned) {
    Panel panel(dc, column);
    place(panel, {{"P1", {60, 190}}, {"P2", {280, 150}}, {"P3", {80, 90}}, {"P4", {270, 35}}});
    if (column == 1) place(panel, {{"P1", {60, 60}}, {"P2", {270, 90}}, {"P3", {100, 30}}, {"P4", {250, 210}}});
    if (column != 1) place(panel, {{"P3", {110, 215}}, {"P4", {240, 40}}});
    const char *first = first_turned ? "P2" : "P1", *first_end = first_turned ? "P1" : "P2";
    const char *second = second_turned ? "P4" : "P3", *second_end = second_turned ? "P3" : "P4";
    panel.line(at(panel, first), at(panel, first_end), side, true);
    panel.line(at(panel, second), at(panel, second_end), side, true);
    const CPointD meeting = panel.point("cross([P1],[P2],[P3],[P4])");
    const std::string text = measured(panel, formula, "°", true);
    const double from = direction(at(panel, first), at(panel, first_end)), sweep = panel.value(formula);
    panel.arc(meeting, 44, from, sweep, bold, true);
    const double middle = (from + sweep / 2) * 3.14159265 / 180;
    panel.label(meeting, 78 * std::cos(middle), -66 * std::sin(middle), text);
    panel.name("P1", -10, -14);
    panel.name("P2", 12, 18);
    panel.name("P3", -20, 4);
    panel.name("P4", 20, 4);
}

Panel cast_panel(CDC& dc, int column, const Sample& cast) {
    Panel panel(dc, column, cast, {{400, 320}, 0.2});
    for (int quarter : {1, 2})
        for (int tooth = 1; tooth <= 6; ++tooth) {
            const std::string name = std::to_string(quarter) + std::to_string(tooth);
            panel.line(CPointD(cast.at((name + 'm').c_str())), CPointD(cast.at((name + 'd').c_str())), outline_stroke);
        }
    return panel;
}

void draw_teeth(CDC& dc, int column, const Sample& cast, int last, const std::string& formula) {
    Panel panel = cast_panel(dc, column, cast);
    for (int quarter : {1, 2})
        for (int tooth = 1; tooth <= last; ++tooth) {
            const std::string name = std::to_string(quarter) + std::to_string(tooth);
            const CPointD mesial(cast.at((name + 'm').c_str())), distal(cast.at((name + 'd').c_str()));
            panel.line(mesial, distal, bold);
            panel.dot(distal, given);
            if (tooth == 1) panel.dot(mesial, given);
        }
    measured(panel, formula, " mm", false);
}

void draw_arch(CDC& dc, int column, const Sample& cast, bool basal) {
    Panel panel = cast_panel(dc, column, cast);
    const std::string curve = basal ? "UB" : "UC";
    const auto point = [&](const char* end) { return CPointD(cast.at((curve + end).c_str())); };
    const auto mark = [&](const char* end, double dx, double dy) { panel.name((curve + end).c_str(), dx, dy); };
    const CPointD left = point("RL"), right = point("RR"), front = point("F");
    // The foot as CCephCalc::Calc_Model drops it: a cast's own points have no place in formulas.
    const CPointD along = left - right;
    const double share =
        ((front.x - right.x) * along.x + (front.y - right.y) * along.y) / (along.x * along.x + along.y * along.y);
    const CPointD foot = right + along * share;
    panel.line(right, left, dashed);
    panel.line(point("WR"), point("WL"), bold);
    panel.line(front, foot, bold);
    panel.right_angle(foot, front, left);
    mark("WR", -32, 0), mark("WL", 32, 0), mark("F", 0, -16), mark("RR", -32, 4), mark("RL", 32, 4);
    const std::string width = "Model([" + curve + "AW])", length = "Model([" + curve + "AL])";
    panel.label(halfway(point("WR"), point("WL")), -42, 18, number(panel.value(width), 1) + " mm");
    panel.label(halfway(front, foot), 42, 30, number(panel.value(length), 1) + " mm");
    panel.caption(width + " across, " + length, basal ? "of the base" : "of the crowns");
}

}  // namespace

void draw_signs(CDC& dc, const Samples& samples) {
    const Sample face = read_sample(samples.path("lateral-average.json"));
    Panel lateral(dc, 0, face, {{-300, 50}, 0.105});
    draw_outlines(lateral, face,
                  {"Soft tissue profile", "Mandible", "Cranial base", "Sella turcica", "Orbit", "Nasal bone", "Maxilla",
                   "Palate", "Frontal bone", "Symphysis, inner"});
    const CPointD corner(-150, 200);
    lateral.line(corner, corner + CPointD(500, 0), axis, true);
    lateral.line(corner, corner + CPointD(0, 500), axis, true);
    lateral.label(corner + CPointD(500, 0), 12, 0, "x", given);
    lateral.label(corner + CPointD(0, 500), 0, 13, "y", given);
    lateral.text({150, 1500}, "rear");
    lateral.text({2250, 1000}, "front");
    lateral.caption("a lateral face looks right", "x to the right, y down");

    const Sample front = read_sample(samples.path("frontal-average.json"));
    Panel frontal(dc, 1, front, {{-520, 50}, 0.105});
    draw_outlines(frontal, front);
    for (const auto& [x, words] : {std::pair(-150.0, "right"), std::pair(2150.0, "left")}) {
        frontal.text({x, 1200}, "patient's");
        frontal.text({x, 1360}, words);
    }
    frontal.caption("a frontal film", "names with R lie on the left");

    Panel signs(dc, 2);
    const CPoint center(160, 122);
    place(signs, {{"P1", center}, {"P2", {240, 122}}});
    for (int turn = -3; turn <= 4; ++turn) {
        const double degrees = turn * 45;
        const CPointD way(80 * std::cos(degrees * 3.14159265 / 180), -80 * std::sin(degrees * 3.14159265 / 180));
        signs.place("P4", center + CPoint(static_cast<int>(std::lround(way.x)), static_cast<int>(std::lround(way.y))));
        const double angle = signs.value("angle2([P1],[P2],[P1],[P4])");
        if (turn == 1) signs.arc(CPointD(center), 48, 0, angle, bold, true);
        if (turn == -1) signs.arc(CPointD(center), 48, 0, angle, side, true);
        signs.line(CPointD(center), at(signs, "P4"), turn == 0 ? axis : thin, true);
        signs.label(at(signs, "P4"), way.x * 0.32, way.y * 0.2, number(angle, 0, turn != 0),
                    turn == 1    ? result
                    : turn == -1 ? given
                                 : ink,
                    turn == 1 || turn == -1);
    }
    signs.caption("angle2 from the line to the right", "counterclockwise is positive");
}

void draw_len(CDC& dc, const Samples&) {
    draw_length(dc, 0, "len([P1],[P2])", {70, 170}, {250, 80}, false);
}

void draw_len_right(CDC& dc, const Samples&) {
    draw_length(dc, 0, "lenR([P1],[P2])", {70, 160}, {250, 90}, true);
    draw_length(dc, 1, "lenR([P1],[P2])", {250, 160}, {70, 90}, true);
}

void draw_len_down(CDC& dc, const Samples&) {
    draw_length(dc, 0, "lenD([P1],[P2])", {90, 60}, {220, 190}, true);
    draw_length(dc, 1, "lenD([P1],[P2])", {90, 190}, {220, 60}, true);
}

void draw_angle_at(CDC& dc, const Samples&) {
    draw_corner(dc, 0, "angle1([P1],[P2],[P3])", {{"P1", {230, 50}}, {"P2", {80, 150}}, {"P3", {260, 200}}});
    draw_corner(dc, 1, "angle1([P1],[P2],[P3])", {{"P1", {80, 200}}, {"P2", {190, 170}}, {"P3", {250, 60}}});
}

void draw_angle_between(CDC& dc, const Samples&) {
    draw_between(dc, 0, "angle2([P1],[P2],[P3],[P4])", false, false);
    draw_between(dc, 1, "angle2([P1],[P2],[P3],[P4])", false, false);
    draw_between(dc, 2, "angle2([P1],[P2],[P4],[P3])", false, true);
}

void draw_cast(CDC& dc, const Samples& samples) {
    const Sample cast = read_sample(samples.path("model-average.json"));
    draw_teeth(dc, 0, cast, 3, "Model([UATW])");
    draw_teeth(dc, 1, cast, 6, "Model([UTTW])");
    draw_arch(dc, 2, cast, false);
    draw_arch(dc, 3, cast, true);
}

}  // namespace constructions
