#include <AnalysisSheet.h>

#include <cmath>
#include <vector>

#include "panel.h"
#include "pictures.h"

namespace constructions {
namespace {

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

}  // namespace

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

void draw_switch(CDC& dc, const Samples&) {
    draw_choice(dc, 0, "switch(0,3>2,7)", {"0", "3>2", "7"});
    draw_choice(dc, 1, "switch(0,0)", {"0", "0"});
}

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

}  // namespace constructions
