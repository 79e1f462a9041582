// A tracing as the bytes of a picture, a drawing or a page.
#pragma once

#include <string>
#include <vector>

#include "report/drawn_file.h"
#include "report/film.h"
#include "tracing/page.h"
#include "tracing/tracing_drawing.h"
#include "tracing/tracing_style.h"

namespace cephtool {

struct TracingPaper {
    Page page;
    const TracingStyle& style;
    const Film* film = nullptr;
    double pixels_a_mm = 0;  // of PNG pictures
    Ruler ruler = short_ruler();
};

// Labels that found no room are noted in `notes`. Throws an Error as drawn_file does.
std::string tracing_file(FileFormat format, const Tracing& tracing, const TracingPaper& paper,
                         std::vector<std::string>& notes);

}  // namespace cephtool
