// Where on a page a tracing lies. A page is in mm; a film is shown at true size unless it would be too small or too
// large to be read then.
#pragma once

#include <optional>

#include "tracing/label_placement.h"
#include "tracing/tracing.h"

namespace cephtool {

struct FilmSize {
    int width, height;  // pixels
};

struct Page {
    double width_mm, height_mm;
    double enlargement;  // 1: true size
    double scale;        // mm of the page a pixel of the film
    Position origin;     // of the film, on the page
    Box drawing;         // the film, or what the tracing takes of the page
    Box legend;          // below it

    Position operator()(Position pixel) const { return {origin.x + pixel.x * scale, origin.y + pixel.y * scale}; }
};

// Of the lines of a legend, the patient's name excepted.
inline constexpr double legend_line_mm = 2.9, legend_line_height_mm = legend_line_mm * 1.3, legend_edge_mm = 6;
// What is remarked on the case, in lines of a legend on a page of this width.
std::vector<std::string> legend_remarks(const Tracing& tracing, double page_width_mm);

// The box round outlines and landmarks, in pixels of the film; where there are none its left is infinite.
Box extent_of_shapes(const Tracing& tracing);

// Room for the whole film when there is one, else for what the tracing shows.
Page page_for(const Tracing& tracing, const std::optional<FilmSize>& film);

// A sheet of A4 or A3, upright or across, for printing at true size; nothing when the drawing does not fit on A3.
std::optional<Page> sheet_for(const Tracing& tracing, const std::optional<FilmSize>& film);

// A part of a larger page, with the legend at its foot: at true size, or at the largest whole 5 % below it at which the
// drawing fits; small drawings are enlarged a whole number of times.
Page page_within(const Box& room, double legend_mm, const Tracing& tracing, const std::optional<FilmSize>& film);

}  // namespace cephtool
