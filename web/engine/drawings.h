// What is drawn of a case: its tracing as points or as a drawing, charts, and the pages of a report.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/film.h"
#include "report/superimposition.h"
#include "web/engine/json.h"

namespace engine {

struct TracingWish {
    std::optional<int> mode;  // none: the first that the folder lists
    bool no_mode = false;     // outlines and landmarks alone
    cephtool::OutlineSource outlines = cephtool::OutlineSource::own_or_fitted;
    int folder = 0;  // whose analyses make the values of the mode
};

// {outlines, lines, landmarks, values, notes}. A case without a scale has no values.
Json tracing_points(const cephtool::Case& record, const TracingWish& wish);
// The tracing of `earlier` in the pixels of `record`. Throws an Error when the line to register on is missing.
Json superimposed_points(const cephtool::Case& record, const cephtool::Case& earlier,
                         const cephtool::Registration& registration, const TracingWish& wish);

// {svg, widthMm, heightMm}. Cases must have a scale.
Json tracing_drawing(const cephtool::Case& record, const TracingWish& wish, const std::optional<cephtool::Film>& film,
                     bool dark);

struct FilmToReport {
    cephtool::Case record;
    std::optional<cephtool::Film> film;
};
// A list of drawings, oldest film first.
Json report_drawings(std::vector<FilmToReport> films, const std::vector<const cephtool::Analysis*>& analyses,
                     const cephtool::Texts& texts);
Json chart_drawing(std::vector<FilmToReport> films, const std::vector<const cephtool::Analysis*>& analyses,
                   const cephtool::Texts& texts);

// Of lateral or frontal films; read once, since a drag has it drawn once a frame.
const cephtool::OutlineTemplate& average_outlines(cephtool::Kind kind);
// {mmPerPixel, landmarks, outlines}; null for casts.
Json average_face(cephtool::Kind kind);

}  // namespace engine
