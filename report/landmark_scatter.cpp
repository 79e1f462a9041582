#include "report/landmark_scatter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/wording.h"
#include "report/style.h"
#include "tracing/font.h"
#include "tracing/label_placement.h"
#include "tracing/tracing_drawing.h"

namespace cephtool {
namespace {

constexpr COLORREF ellipse_ink = RGB(190, 30, 45), reading_ink = RGB(20, 70, 160);
constexpr double reading_mm = 0.2, name_mm = 2.6;

TracingStyle pale_style() {
    TracingStyle style = paper_style();
    for (OutlinePen* pen : {&style.main, &style.fine, &style.soft, &style.fine_soft, &style.tooth}) {
        pen->colour = rule_ink;
        pen->tenths_mm = 1;
    }
    return style;
}

// In the middle of the room, at true size whatever its height: reports' tracings may be smaller, ellipses may not.
Page page_at_true_size(const Tracing& tracing, const Box& room) {
    const Box box = extent_of_shapes(tracing);
    const double scale = tracing.mm_per_pixel;
    const double left = room.left + (room.width() - box.width() * scale) / 2;
    return {.width_mm = room.width(),
            .height_mm = room.height(),
            .enlargement = 1,
            .scale = scale,
            .origin = {left - box.left * scale, room.top - box.top * scale},
            .drawing = room,
            .legend = {room.left, room.bottom - 12, room.right, room.bottom}};
}

// Millimetres of the page; along Frankfort the average face looks to the right.
struct Cloud {
    std::string name;
    Position at;
    ScatterEllipse ellipse;
    std::vector<Position> readings;

    Box box() const {
        const double x = std::hypot(ellipse.major.x, ellipse.minor.x), y = std::hypot(ellipse.major.y, ellipse.minor.y);
        return {at.x - x, at.y - y, at.x + x, at.y + y};
    }
};

void draw_cloud(const Canvas& canvas, const Cloud& cloud) {
    constexpr int chords = 48;
    for (const Position& reading : cloud.readings)
        draw_dot(canvas.dc, {cloud.at.x + reading.x, cloud.at.y - reading.y}, reading_mm, reading_ink);
    const auto [major, minor] = cloud.ellipse;
    Position last{};
    for (int i = 0; i <= chords; ++i) {
        const double turn = 2 * std::numbers::pi * i / chords, c = std::cos(turn), s = std::sin(turn);
        const Position p{cloud.at.x + c * major.x + s * minor.x, cloud.at.y - c * major.y - s * minor.y};
        if (i > 0) draw_line(canvas.dc, last, p, 2, ellipse_ink);
        last = p;
    }
}

void draw_names(const Canvas& canvas, const std::vector<Cloud>& clouds, const Box& room) {
    const SelectedFont font(canvas, name_mm);
    std::vector<Label> labels;
    LabelSurroundings around{room, 0.4, {}, {}};
    for (const Cloud& cloud : clouds) {
        const Position size = font.extent(drawable(cloud.name));
        labels.push_back({cloud.at, size.x, size.y});
        around.obstacles.push_back(cloud.box());
    }
    const auto placed = placed_labels(labels, around);
    for (std::size_t i = 0; i < clouds.size(); ++i) {
        if (!placed[i]) continue;
        if (placed[i]->leader) draw_line(canvas.dc, clouds[i].at, *placed[i]->leader, 1, quiet_ink);
        font.write({placed[i]->box.left, placed[i]->box.top}, drawable(clouds[i].name), ink);
    }
}

}  // namespace

ScatterEllipse scatter_ellipse(const StudyLandmark& landmark) {
    // Chi-square of two degrees of freedom; readings of a film lie about their mean, which takes one of them.
    static const double square = -2 * std::log(0.05);
    const double films = static_cast<double>(landmark.along.films),
                 readings = static_cast<double>(landmark.along.readings);
    double xx = 0, xy = 0, yy = 0;
    for (const Position& p : landmark.from_mean) xx += p.x * p.x, xy += p.x * p.y, yy += p.y * p.y;
    const double count = films * (readings - 1);
    if (!(count > 0)) return {};
    xx /= count, xy /= count, yy /= count;
    const double middle = (xx + yy) / 2, reach = std::hypot((xx - yy) / 2, xy), turn = std::atan2(2 * xy, xx - yy) / 2;
    const double major = std::sqrt(square * (middle + reach)),
                 minor = std::sqrt(square * std::max(middle - reach, 0.0));
    const double c = std::cos(turn), s = std::sin(turn);
    return {{c * major, s * major}, {-s * minor, c * minor}};
}

void add_landmark_scatter(Pages& pages, const Study& study, const OutlineTemplate& face) {
    if (face.curves.empty()) return;
    const Texts& texts = pages.texts();
    Tracing tracing;
    tracing.mm_per_pixel = face.mm_per_pixel;
    for (const TemplateCurve& curve : face.curves) tracing.outlines.push_back({curve.outline, curve.style});
    std::vector<std::string> elsewhere;
    for (const StudyLandmark& landmark : study.landmarks) {
        if (const Position* const at = face.find_landmark(landmark.name))
            tracing.landmarks.push_back({landmark.name, *at});
        else
            elsewhere.push_back(landmark.name);
    }
    if (tracing.landmarks.empty()) return;
    pages.new_page();
    add_paragraph(pages, texts("Scatter of the readings on the average face"), title_mm, ink, true);
    add_paragraph(
        pages,
        texts(
            "At true size (1:1): red the ellipse that holds 95 % of single readings, blue each reading, about the mean "
            "of its film; along Frankfort and across it."),
        note_mm, quiet_ink);
    if (!elsewhere.empty())
        add_paragraph(pages, texts("Not on the average face: %1", joined(elsewhere, ", ")), note_mm, quiet_ink);
    const Box room = pages.take(pages.height_left());
    const Page page = page_at_true_size(tracing, room);
    std::vector<Cloud> clouds;
    for (const StudyLandmark& landmark : study.landmarks) {
        const Position* const at = face.find_landmark(landmark.name);
        if (!at) continue;
        clouds.push_back({landmark.name, page(*at), scatter_ellipse(landmark), landmark.from_mean});
    }
    tracing.landmarks.clear();
    const Ruler ruler{100, texts("100 mm: check with a ruler"), true, false};
    pages.add([=](const Canvas& canvas) {
        std::vector<std::string> unlabelled;
        draw_tracing(tracing, page, pale_style(), nullptr, ruler, canvas, unlabelled);
        for (const Cloud& cloud : clouds) draw_cloud(canvas, cloud);
        draw_names(canvas, clouds, room);
    });
}

}  // namespace cephtool
