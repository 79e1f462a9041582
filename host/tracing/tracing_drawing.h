// Draws a tracing on any surface, as the library's drawing functions do it.
#pragma once

#include <functional>

#include "host/tracing/page.h"
#include "host/tracing/tracing_style.h"

namespace cephtool {

// A surface in the map mode MM_HIMETRIC that counts as a printer, so that the widths of pens are in mm.
struct TracingCanvas {
    CDC& dc;
    CDC& measure;                                  // tells how wide texts are; may be `dc`
    std::function<void(const char*)> begin_layer;  // what is drawn from here on belongs to this part of the tracing
    std::function<void(const RECT&)> draw_film;    // empty without a film
};

// The names of labels that found no room are appended to `unlabelled`.
void draw_tracing(const Tracing& tracing, const Page& page, const TracingStyle& style, bool with_ruler,
                  const TracingCanvas& canvas, std::vector<std::string>& unlabelled);

}  // namespace cephtool
