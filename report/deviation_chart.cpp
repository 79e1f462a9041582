#include "report/deviation_chart.h"

#include <algorithm>
#include <cmath>

#include "report/style.h"
#include "tracing/font.h"

namespace cephtool {
namespace {

constexpr double half_range = 4;  // SD, from the middle to an edge
constexpr int bands = 3;
constexpr COLORREF band_inks[bands] = {RGB(214, 218, 224), RGB(230, 233, 237), RGB(243, 245, 247)};
constexpr double mark_mm = 0.85;

// At the edge, pointing out of the chart.
void draw_pointer(const Canvas& canvas, Position at, double direction, COLORREF colour) {
    constexpr double length = 2, half_height = 1.1;
    fill_triangle(canvas.dc, {at.x + direction * length, at.y}, {at.x, at.y - half_height}, {at.x, at.y + half_height},
                  colour);
}

}  // namespace

double ChartScale::x_of(double deviation) const {
    return (left + right) / 2 + std::clamp(deviation, -limit, limit) / half_range * (right - left) / 2;
}

bool ChartScale::is_beyond(double deviation) {
    return std::abs(deviation) > limit;
}

void draw_bands(const Canvas& canvas, const ChartScale& scale, double top, double bottom) {
    for (int band = bands; band >= 1; --band) {
        fill_box(canvas.dc, {scale.x_of(-band), top, scale.x_of(band), bottom}, band_inks[band - 1]);
    }
    for (int sd = -bands; sd <= bands; ++sd) {
        const double x = scale.x_of(sd);
        draw_line(canvas.dc, {x, top}, {x, bottom}, sd == 0 ? 3 : 1, sd == 0 ? quiet_ink : rule_ink);
    }
}

void draw_scale_numbers(const Canvas& canvas, const ChartScale& scale, double top, double line_mm) {
    const SelectedFont font(canvas, line_mm);
    for (int sd = -bands; sd <= bands; ++sd) {
        const CString text = drawable((sd > 0 ? "+" : "") + std::to_string(sd));
        font.write({scale.x_of(sd) - font.extent(text).x / 2, top}, text, quiet_ink);
    }
}

void draw_time_mark(const Canvas& canvas, Position at, std::size_t time) {
    const COLORREF colour = time_inks[time];
    const double x = at.x, y = at.y;
    if (time == 0) {
        draw_dot(canvas.dc, at, mark_mm, colour);
    } else if (time == 1) {
        fill_box(canvas.dc, {x - mark_mm, y - mark_mm, x + mark_mm, y + mark_mm}, colour);
    } else {
        constexpr double reach = mark_mm * 1.4;
        fill_triangle(canvas.dc, {x - reach, y}, {x + reach, y}, {x, y - reach}, colour);
        fill_triangle(canvas.dc, {x - reach, y}, {x + reach, y}, {x, y + reach}, colour);
    }
}

void draw_polygons(const Canvas& canvas, const ChartScale& scale, const std::vector<ChartRow>& rows) {
    for (std::size_t time = most_times; time-- > 0;) {  // the first film on top
        const auto deviation_in = [&](const ChartRow& row) {
            return time < row.deviations.size() ? row.deviations[time] : std::nullopt;
        };
        std::optional<Position> before;
        for (const ChartRow& row : rows) {
            std::optional<Position> at;
            if (const auto deviation = deviation_in(row)) at = Position{scale.x_of(*deviation), row.y};
            if (before && at) draw_line(canvas.dc, *before, *at, 3, time_inks[time]);
            before = at;
        }
        for (const ChartRow& row : rows) {
            const auto deviation = deviation_in(row);
            if (!deviation) continue;
            const Position at{scale.x_of(*deviation), row.y};
            if (ChartScale::is_beyond(*deviation)) {
                draw_pointer(canvas, at, *deviation > 0 ? 1 : -1, time_inks[time]);
            } else {
                draw_time_mark(canvas, at, time);
            }
        }
    }
}

}  // namespace cephtool
