// Draws a tracing on any surface, as the library's drawing functions do it.
#pragma once

#include <string>

#include "tracing/canvas.h"
#include "tracing/page.h"
#include "tracing/tracing_style.h"

namespace cephtool {

// A scale beside or below the legend of a tracing.
struct Ruler {
    int length_mm;  // of the patient
    std::string text;
    bool fine;          // with marks at every millimetre
    bool below_legend;  // the legend has the width of the page
};
const Ruler& long_ruler();
const Ruler& short_ruler();

// `film` is drawn below the tracing; null: none. The names of labels that found no room are appended to `unlabelled`.
void draw_tracing(const Tracing& tracing, const Page& page, const TracingStyle& style, const Film* film,
                  const Ruler& ruler, const Canvas& canvas, std::vector<std::string>& unlabelled);

// The outlines alone, without filled teeth and what is dotted.
void draw_outlines(const Tracing& tracing, const Page& page, const TracingStyle& style, const Canvas& canvas);

}  // namespace cephtool
