#include "tracing/tracing_drawing.h"

#include <Tools.h>

#include <algorithm>
#include <cmath>

#include "tracing/font.h"

namespace cephtool {
namespace {

constexpr int up = 1;  // the library's flag for map modes whose y points up: it negates y
constexpr int solid = 0;
constexpr int dots = 2;  // PS_DOT
// Outlines are handed over in steps of 1/40 mm: the library keeps samples ten steps apart, finer than a pen is wide.
constexpr double outline_steps_a_mm = 40;

constexpr double label_mm = 2.9, patient_mm = 4.2;
constexpr double dot_mm = 0.65, halo_mm = 1.0;
class Painter {
 public:
    Painter(const Tracing& tracing, const Page& page, const TracingStyle& style, const Film* film, const Canvas& canvas)
        : tracing_(tracing), page_(page), style_(style), film_(film), canvas_(canvas), dc_(canvas.dc) {}

    void paint(const Ruler& ruler, std::vector<std::string>& unlabelled) {
        if (film_) paint_film();
        canvas_.begin_layer("outlines");
        paint_outlines();
        canvas_.begin_layer("planes");
        for (const TracingLine& line : tracing_.lines) {
            paint_line(page_(line.from), page_(line.to), line.bold ? 4 : 2, style_.mode_colour(line.colour));
            add_ink(page_(line.from), page_(line.to));
        }
        canvas_.begin_layer("values");
        paint_values();
        place_labels(unlabelled);
        canvas_.begin_layer("landmarks");
        paint_landmarks();
        canvas_.begin_layer("labels");
        paint_labels();
        canvas_.begin_layer("ruler");
        paint_ruler(ruler);
        canvas_.begin_layer("legend");
        paint_legend(ruler);
    }

    void paint_outline_lines(bool dotted_too = true) {
        for (const bool fine : {true, false})
            for (const FittedCurve& curve : tracing_.outlines) {
                if (curve.style.fine != fine || (curve.style.dotted && !dotted_too)) continue;
                const std::vector<tagPOINT> points = outline_points(curve.outline);
                const OutlinePen& pen = style_.pen(curve.style);
                CTools::Draw_SPLine(&dc_, CPoint(0, 0), units_a_mm / outline_steps_a_mm, points.data(),
                                    static_cast<short>(points.size()), pen.colour, static_cast<unsigned>(pen.tenths_mm),
                                    curve.outline.closed, curve.style.dotted ? dots : solid, up);
                for (std::size_t i = 0; i + 1 < curve.outline.points.size(); ++i) {
                    add_ink(page_(curve.outline.points[i]), page_(curve.outline.points[i + 1]));
                }
            }
    }

 private:
    void paint_film() {
        canvas_.begin_layer("film");
        canvas_.draw_picture(*film_, upward(page_.drawing));
    }

    std::vector<tagPOINT> outline_points(const Outline& outline) const {
        std::vector<tagPOINT> points;
        for (const Position& pixel : outline.points) {
            const Position at = page_(pixel);
            points.push_back({unit(at.x, outline_steps_a_mm), unit(at.y, outline_steps_a_mm)});
        }
        return points;
    }

    void paint_outlines() {
        const bool filled = !film_;
        for (const FittedCurve& curve : tracing_.outlines) {
            if (!filled || curve.style.tissue != Tissue::tooth || curve.style.dotted) continue;
            fill(outline_points(curve.outline), curve.outline.closed);
        }
        paint_outline_lines();
    }

    // An open curve, such as a root, is filled a little beyond its ends, up to the crown's border and into the crown.
    void fill(std::vector<tagPOINT> points, bool closed) {
        constexpr int steps = 8;  // between two control points
        if (points.size() < 3) return;
        if (!closed) points.push_back(beyond_the_ends(points));
        const std::size_t n = points.size();
        std::vector<tagPOINT> samples;
        for (std::size_t i = 0; i < n; ++i)
            for (int step = 0; step < steps; ++step) {
                const tagPOINT a = points[(i + n - 1) % n], b = points[i], c = points[(i + 1) % n],
                               d = points[(i + 2) % n];
                double x = 0, y = 0;
                CTools::SplineCal(&x, &y, a.x, a.y, b.x, b.y, c.x, c.y, d.x, d.y, static_cast<double>(step) / steps,
                                  CRect(0, 0, 0, 0), 0);
                const CPoint p = upward(Position{x / outline_steps_a_mm, y / outline_steps_a_mm});
                samples.push_back({p.x, p.y});
            }
        CPen none(PS_NULL, 0, RGB(0, 0, 0));
        CBrush brush(style_.tooth_fill);
        CPen* const pen_before = dc_.SelectObject(&none);
        CBrush* const brush_before = dc_.SelectObject(&brush);
        dc_.Polygon(samples.data(), static_cast<int>(samples.size()));
        dc_.SelectObject(brush_before);
        dc_.SelectObject(pen_before);
    }

    // In front of the middle between the ends, away from the rest of the curve.
    static tagPOINT beyond_the_ends(const std::vector<tagPOINT>& points) {
        const tagPOINT a = points.front(), b = points.back(), inner = points[points.size() / 2];
        const double x = (a.x + b.x) / 2.0, y = (a.y + b.y) / 2.0;
        const double width = std::sqrt((b.x - a.x) * 1.0 * (b.x - a.x) + (b.y - a.y) * 1.0 * (b.y - a.y));
        const double length = std::sqrt((x - inner.x) * (x - inner.x) + (y - inner.y) * (y - inner.y));
        const double way = length > 0 ? 0.35 * width / length : 0;
        return {static_cast<LONG>(std::lround(x + way * (x - inner.x))),
                static_cast<LONG>(std::lround(y + way * (y - inner.y)))};
    }

    void paint_line(Position from, Position to, int tenths_mm, COLORREF colour) {
        draw_line(dc_, from, to, tenths_mm, colour);
    }

    // Beyond some length of lines labels stand on them anyway.
    void add_ink(Position from, Position to) {
        constexpr double apart_mm = 1.2;
        constexpr std::size_t most_ink = 20000;
        const double length = std::sqrt((to.x - from.x) * (to.x - from.x) + (to.y - from.y) * (to.y - from.y));
        const int steps = static_cast<int>(std::clamp(length / apart_mm, 1.0, 1000.0));
        for (int i = 0; i < steps && ink_.size() < most_ink; ++i) {
            const double t = static_cast<double>(i) / steps;
            ink_.push_back({from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)});
        }
    }

    void paint_values() {
        for (const TracingValue& value : tracing_.values) {
            const SelectedFont font(canvas_, value.size_pt * mm_a_point * page_.enlargement);
            const CString text = drawable(value.text);
            values_.push_back(room_for(page_(value.corner), font.extent(text)));
            const Position corner{values_.back().left, values_.back().top};
            const COLORREF colour = style_.mode_colour(value.colour);
            if (film_) {
                font.write_on_film(corner, text, colour, style_.halo);
            } else {
                font.write(corner, text, colour);
            }
        }
    }

    // The place asked for, or the nearest one that stands on fewer lines; never on another value while there is room.
    Box room_for(Position corner, Position size) const {
        constexpr int most_steps = 4;
        constexpr double step_mm = 1.5, on_a_value = 1000, outside = 100;
        std::optional<Box> best;
        double least = 0;
        for (int right = -most_steps; right <= most_steps; ++right)
            for (int down = -most_steps; down <= most_steps; ++down) {
                const double left = corner.x + right * step_mm, top = corner.y + down * step_mm;
                const Box box{left, top, left + size.x, top + size.y};
                double price = 0.1 * (std::abs(right) + std::abs(down)) + static_cast<double>(ink_under(box));
                for (const Box& other : values_) price += overlap(box, other) ? on_a_value : 0;
                if (left < page_.drawing.left || box.right > page_.drawing.right) price += outside;
                if (best && price >= least) continue;
                best = box;
                least = price;
            }
        return *best;
    }

    std::ptrdiff_t ink_under(const Box& box) const {
        constexpr double room_mm = 0.5;
        return std::ranges::count_if(ink_, [&](Position p) {
            return p.x > box.left - room_mm && p.x < box.right + room_mm && p.y > box.top && p.y < box.bottom;
        });
    }

    void place_labels(std::vector<std::string>& unlabelled) {
        const SelectedFont font(canvas_, label_mm);
        std::vector<Label> labels;
        for (const Landmark& landmark : tracing_.landmarks) {
            const Position size = font.extent(drawable(landmark.name));
            labels.push_back({page_(landmark.position), size.x, size.y});
        }
        labels_ = placed_labels(labels, {page_.drawing, 0.5, values_, ink_});
        for (std::size_t i = 0; i < labels_.size(); ++i)
            if (!labels_[i]) unlabelled.push_back(tracing_.landmarks[i].name);
    }

    void paint_landmarks() {
        for (std::size_t i = 0; i < labels_.size(); ++i) {
            if (!labels_[i] || !labels_[i]->leader) continue;
            paint_line(page_(tracing_.landmarks[i].position), *labels_[i]->leader, 1, style_.leader);
        }
        for (const Landmark& landmark : tracing_.landmarks)
            draw_dot(dc_, page_(landmark.position), halo_mm, style_.halo);
        for (const Landmark& landmark : tracing_.landmarks) draw_dot(dc_, page_(landmark.position), dot_mm, style_.dot);
    }

    void paint_labels() {
        const SelectedFont font(canvas_, label_mm);
        for (std::size_t i = 0; i < labels_.size(); ++i) {
            if (!labels_[i]) continue;
            const Position corner{labels_[i]->box.left, labels_[i]->box.top};
            const CString name = drawable(tracing_.landmarks[i].name);
            if (film_) {
                font.write_on_film(corner, name, style_.label, style_.halo);
            } else {
                font.write(corner, name, style_.label);
            }
        }
    }

    // At the right of the legend; its ends are exactly its length of the patient apart.
    void paint_ruler(const Ruler& ruler) {
        const double right = page_.legend.right - legend_edge_mm, y = page_.legend.bottom - 5;
        const double left = right - ruler.length_mm * page_.enlargement;
        paint_line({left, y}, {right, y}, 3, style_.text);
        for (int mm = 0; mm <= ruler.length_mm; mm += ruler.fine ? 1 : 10) {
            const double height = mm % 10 == 0 ? 2.4 : mm % 5 == 0 ? 1.7 : 1;
            const double x = left + mm * page_.enlargement;
            paint_line({x, y}, {x, y - height}, mm % 10 == 0 ? 2 : 1, style_.text);
        }
        const SelectedFont font(canvas_, legend_line_mm);
        const CString text = drawable(ruler.text);
        const Position size = font.extent(text);
        font.write({right - size.x, y - 3.2 - size.y}, text, style_.quiet_text);
    }

    void paint_legend(const Ruler& ruler) {
        const double left = page_.legend.left + legend_edge_mm, width = page_.legend.right - legend_edge_mm - left;
        double top = page_.legend.top + 2;
        for (const std::string& line : legend_remarks(tracing_, page_.legend.width())) {
            const SelectedFont font(canvas_, legend_line_mm, true);
            font.write({left, top}, font.cut(line, width), style_.text);
            top += legend_line_height_mm;
        }
        if (!tracing_.patient.empty()) {
            const SelectedFont font(canvas_, patient_mm, true);
            font.write({left, top}, font.cut(tracing_.patient, width), style_.text);
            top += patient_mm * 1.25;
        }
        const SelectedFont font(canvas_, legend_line_mm);
        const double beside_ruler = width - (ruler.below_legend ? 0 : ruler.length_mm * page_.enlargement + 4);
        for (const std::string& line : {tracing_.facts, tracing_.mode, tracing_.origin}) {
            if (line.empty()) continue;
            font.write({left, top}, font.cut(line, beside_ruler), style_.quiet_text);
            top += legend_line_height_mm;
        }
    }

    const Tracing& tracing_;
    const Page& page_;
    const TracingStyle& style_;
    const Film* film_;
    const Canvas& canvas_;
    CDC& dc_;
    std::vector<Box> values_;
    std::vector<Position> ink_;
    std::vector<std::optional<PlacedLabel>> labels_;
};

}  // namespace

const Ruler& long_ruler() {
    static const Ruler ruler{100, "100 mm: check with a ruler after printing", true, true};
    return ruler;
}

const Ruler& short_ruler() {
    static const Ruler ruler{50, "50 mm", false, false};
    return ruler;
}

void draw_outlines(const Tracing& tracing, const Page& page, const TracingStyle& style, const Canvas& canvas) {
    canvas.dc.m_bPrinting = TRUE;
    Painter(tracing, page, style, nullptr, canvas).paint_outline_lines(false);
}

void draw_tracing(const Tracing& tracing, const Page& page, const TracingStyle& style, const Film* film,
                  const Ruler& ruler, const Canvas& canvas, std::vector<std::string>& unlabelled) {
    canvas.dc.m_bPrinting = TRUE;
    Painter(tracing, page, style, film, canvas).paint(ruler, unlabelled);
}

}  // namespace cephtool
