#include "pictures.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>
#include <vector>

#include "panel.h"

namespace constructions {
namespace {

using NamedPlaces = std::initializer_list<std::pair<const char*, CPoint>>;

constexpr Stroke outline_stroke{RGB(175, 175, 175), 1, false}, axis{given, 2, false};

void place(Panel& panel, NamedPlaces places) {
    for (const auto& [name, at] : places) panel.place(name, at);
}

CPointD at(Panel& panel, const char* landmark) {
    return panel.point('[' + std::string(landmark) + ']');
}

// The value of a formula as its caption, and as a text for a label.
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

void draw_outlines(Panel& panel, const Sample& sample, std::initializer_list<const char*> names = {}) {
    for (const Outline& outline : sample.outlines)
        if (names.size() == 0 || std::ranges::find(names, outline.name) != names.end())
            panel.curve(outline.points, outline_stroke, outline.closed);
}

// --- Axes and signs ------------------------------------------------------------------------------------------------

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

// --- Lengths -------------------------------------------------------------------------------------------------------

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

// --- Angles --------------------------------------------------------------------------------------------------------

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

void draw_angle_at(CDC& dc, const Samples&) {
    draw_corner(dc, 0, "angle1([P1],[P2],[P3])", {{"P1", {230, 50}}, {"P2", {80, 150}}, {"P3", {260, 200}}});
    draw_corner(dc, 1, "angle1([P1],[P2],[P3])", {{"P1", {80, 200}}, {"P2", {190, 170}}, {"P3", {250, 60}}});
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

void draw_angle_between(CDC& dc, const Samples&) {
    draw_between(dc, 0, "angle2([P1],[P2],[P3],[P4])", false, false);
    draw_between(dc, 1, "angle2([P1],[P2],[P3],[P4])", false, false);
    draw_between(dc, 2, "angle2([P1],[P2],[P4],[P3])", false, true);
}

// --- Points --------------------------------------------------------------------------------------------------------

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

void draw_bisectors(CDC& dc, const Samples&) {
    draw_bisector(dc, 0, 140);
    draw_bisector(dc, 1, -80);
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

// --- Casts ---------------------------------------------------------------------------------------------------------

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

void draw_cast(CDC& dc, const Samples& samples) {
    const Sample cast = read_sample(samples.path("model-average.json"));
    draw_teeth(dc, 0, cast, 3, "Model([UATW])");
    draw_teeth(dc, 1, cast, 6, "Model([UTTW])");
    draw_arch(dc, 2, cast, false);
    draw_arch(dc, 3, cast, true);
}

// --- Other items ---------------------------------------------------------------------------------------------------

void draw_references(CDC& dc, const Samples& samples) {
    constexpr char definition[] = "Calc:\nSNB=angle1([S],[N],[B])\nMean:\nSNB=80\nSD:\nSNB=2\n";
    const AnalysisSheet sheet(0, definition, sizeof definition - 1);
    Sample face = read_sample(samples.path("lateral-class2.json"));
    const SheetSubject subject{face.record()};
    const auto asked = [&](int mode) { return sheet.Calc_1(mode, "SNB", subject, 0, nullptr, nullptr); };
    const double value = asked(0), deviation = asked(1), mean = asked(2), sd = asked(3);

    Panel panel(dc, 0);
    constexpr double middle = 190, unit = 48, base = 170;
    const auto place = [&](double x) { return middle + (x - mean) / sd * unit; };
    const auto bell = [](double z) { return base - 110 * std::exp(-z * z / 2); };
    CPointD before(middle - 3.2 * unit, bell(-3.2));
    for (double z = -3.1; z < 2.65; z += 0.1) {
        const CPointD next(middle + z * unit, bell(z));
        panel.line(before, next, side);
        before = next;
    }
    panel.line({30, base}, {312, base}, thin);
    for (int z = -3; z <= 2; ++z) panel.line({middle + z * unit, base - 4}, {middle + z * unit, base + 4}, thin);
    panel.line({middle, bell(0)}, {middle, base}, dashed);
    panel.label({middle, bell(0)}, 0, -14, "mean " + number(mean, 0), ink, false);
    panel.line({middle, base - 20}, {place(mean + sd), base - 20}, {ink, 2}, true);
    panel.label({middle + unit / 2, base - 20}, 0, -14, "sdv " + number(sd, 0), ink, false);
    panel.line({middle, base + 22}, {place(value), base + 22}, bold, true);
    panel.label({place(value), base + 22}, 56, 20, "sdu " + number(deviation, 2, true));
    panel.line({place(value), base - 60}, {place(value), base + 28}, {ink, 2});
    panel.label({place(value), base - 60}, -4, -14, "case " + number(value, 1), ink, false);
    panel.caption("case, mean, sdv and sdu of (\"SNB\")", "sdu = (case - mean) / sdv");
}

void draw_choice(CDC& dc, int column, const std::string& formula, const std::vector<std::string>& arguments) {
    Panel panel(dc, column);
    const double chosen = panel.value(formula);
    for (std::size_t i = 0; i <= arguments.size(); ++i) {
        const double x = 70 + 75 * static_cast<double>(i);
        const bool is_chosen = static_cast<double>(i) == chosen;
        const Stroke frame = is_chosen ? bold : i < arguments.size() ? thin : dashed;
        const CPointD corners[] = {{x - 28, 70}, {x + 28, 70}, {x + 28, 126}, {x - 28, 126}, {x - 28, 70}};
        for (int corner = 0; corner < 4; ++corner) panel.line(corners[corner], corners[corner + 1], frame);
        panel.text({x, 98}, i < arguments.size() ? arguments[i] : "none", ink);
        panel.text({x, 150}, number(static_cast<double>(i), 0), is_chosen ? result : help, is_chosen);
    }
    panel.text({160, 190}, "positions, from 0", help);
    panel.caption(formula, "= " + number(chosen, 0));
}

void draw_switch(CDC& dc, const Samples&) {
    draw_choice(dc, 0, "switch(0,3>2,7)", {"0", "3>2", "7"});
    draw_choice(dc, 1, "switch(0,0)", {"0", "0"});
}

// --- Worked examples -----------------------------------------------------------------------------------------------

void draw_examples(CDC& dc, const Samples& samples) {
    const Sample face = read_sample(samples.path("lateral-average.json"));
    Panel jaw(dc, 0, face, {{340, 1030}, 0.235});
    draw_outlines(jaw, face, {"Mandible"});
    const std::string gonion = "cross([Ar],[Go(P)],[Me],[Go(L)])";
    jaw.through(at(jaw, "Ar"), at(jaw, "Go(P)"), dashed);
    jaw.through(at(jaw, "Me"), at(jaw, "Go(L)"), dashed);
    jaw.arc(jaw.point(gonion), 150, direction(jaw.point(gonion), at(jaw, "Ar")),
            -jaw.value("angle1([Ar]," + gonion + ",[Me])"), side, false);
    jaw.label(jaw.point(gonion), 66, -34, number(jaw.value("angle1([Ar]," + gonion + ",[Me])"), 1) + "°", given);
    jaw.name("Ar", 16, 4);
    jaw.name("Go(P)", -30, 0);
    jaw.name("Go(L)", -4, 20);
    jaw.name("Me", 0, -14);
    jaw.ring(made(jaw, gonion));

    const Sample class_two = read_sample(samples.path("lateral-class2.json"));
    Panel chin(dc, 1, class_two, {{460, 640}, 0.178});
    draw_outlines(chin, class_two, {"Soft tissue profile", "Mandible", "Nasal bone", "Maxilla"});
    chin.through(at(chin, "Po"), at(chin, "Or"), dashed);
    const CPointD pog = chin.point("vertical([Pog],[Po],[Or])"), n = chin.point("vertical([N],[Po],[Or])");
    chin.through(at(chin, "N"), n, dashed);
    chin.line(at(chin, "Pog"), pog, thin);
    const double distance = chin.value(
        "len(extension([Or],[Po],1000),vertical([Pog],[Po],[Or]))-"
        "len(extension([Or],[Po],1000),vertical([N],[Po],[Or]))");
    chin.line(n, pog, bold, true);
    chin.name("Po", 0, -14);
    chin.name("Or", -14, -14);
    chin.name("N", 14, -4);
    chin.name("Pog", 26, 4);
    chin.dot(n, result);
    chin.ring(pog);
    chin.label(pog, -48, 24, number(distance, 1, true) + " mm");
    chin.caption("foot of Pog less foot of N, from far behind", "= " + number(distance, 1, true) + " mm");
}

constexpr Picture all[] = {
    {"signs", 3, draw_signs},
    {"len", 1, draw_len},
    {"lenR", 2, draw_len_right},
    {"lenD", 2, draw_len_down},
    {"angle1", 2, draw_angle_at},
    {"angle2", 3, draw_angle_between},
    {"Model", 4, draw_cast},
    {"references", 1, draw_references},
    {"switch", 2, draw_switch},
    {"mid", 1, draw_middle},
    {"vertical", 2, draw_feet},
    {"cross", 2, draw_crossing},
    {"AngleBisector", 2, draw_bisectors},
    {"extension", 2, draw_extensions},
    {"EffectiveA", 1, draw_effective_a},
    {"examples", 2, draw_examples},
};

}  // namespace

std::span<const Picture> pictures() {
    return all;
}

}  // namespace constructions
