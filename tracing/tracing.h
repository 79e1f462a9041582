// What a tracing shows of a case, in pixels of the film, before anything is drawn.
#pragma once

#include <string>
#include <vector>

#include "results/analysis_folder.h"
#include "tracing/mirrored_half.h"

namespace cephtool {

struct TracingLine {
    std::string name;  // "S-N"
    Position from, to;
    std::string colour;  // "#rrggbb"
    bool bold = false;
};

struct TracingValue {
    std::string text;  // "SNA 82.0"
    Position corner;   // upper left
    std::string colour;
    double size_pt = 0;         // height of the font at true size
    std::string japanese = {};  // the text
};

struct Tracing {
    std::string patient;               // the case's name, its file's where it has none
    std::string facts;                 // kind, sex, age, day of the film
    std::string mode;                  // the display mode's title
    std::string origin;                // of the outlines, where they are not the case's own
    std::vector<std::string> remarks;  // on how the case is to be read
    double mm_per_pixel = 0;
    std::vector<FittedCurve> outlines;
    std::vector<TracingLine> lines;
    std::vector<Landmark> landmarks;
    std::vector<TracingValue> values;
    std::size_t measures = 0;        // that were added to lines and values (measures.h)
    std::vector<std::string> notes;  // what was left out, and why
};

enum class OutlineSource { own_or_fitted, fitted, none };

// The case must have a scale. `face` is only looked at when outlines are wanted; a cast without outlines of its own has
// crowns, their widths and ideal arches instead (cast_outlines.h). `mirrored` is the half of a frontal tracing that is
// laid over the other one, dotted, where there are outlines.
Tracing tracing_of(const Case& record, const DisplayMode& mode, const std::vector<Analysis>& analyses,
                   const OutlineTemplate& face, OutlineSource outlines, Half mirrored = Half::right);

}  // namespace cephtool
