// The chart of deviations (polygon chart, wigglegram): items below each other, each value at its distance from the mean
// in SD, joined by a line for each film.
#pragma once

#include <optional>
#include <vector>

#include "tracing/canvas.h"

namespace cephtool {

struct ChartScale {
    double left, right;  // mm

    // Beyond it, a value is drawn at this place and marked.
    static constexpr double limit = 3.5;

    double x_of(double deviation) const;
    static bool is_beyond(double deviation);
};

// The bands up to 1, 2 and 3 SD and their borders, as background of one row or more.
void draw_bands(const Canvas& canvas, const ChartScale& scale, double top, double bottom);
// The numbers of the borders, in SD.
void draw_scale_numbers(const Canvas& canvas, const ChartScale& scale, double top, double line_mm);

// The deviations of one item, of each film; nothing where there is none.
struct ChartRow {
    double y;
    std::vector<std::optional<double>> deviations;
};

// Rows with a film's deviation that follow each other are joined.
void draw_polygons(const Canvas& canvas, const ChartScale& scale, const std::vector<ChartRow>& rows);

// The mark of the film with this number: a dot, a square, a diamond.
void draw_time_mark(const Canvas& canvas, Position at, std::size_t time);

}  // namespace cephtool
