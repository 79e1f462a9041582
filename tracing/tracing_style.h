// Colours and weights of a tracing.
#pragma once

#include <Framework.h>
#include <framework/drawing.h>

#include <string>

#include "tracing/outline_template.h"

namespace cephtool {

struct OutlinePen {
    COLORREF colour;
    int tenths_mm;
};

struct TracingStyle {
    COLORREF paper, text, quiet_text;
    OutlinePen main, fine, soft, fine_soft, tooth, dotted;
    COLORREF tooth_fill;
    COLORREF dot, halo, label, leader;
    bool dark;  // colours of a display mode, made for white paper, are brightened

    const OutlinePen& pen(const OutlineStyle& outline) const;
    // A display mode's "#rrggbb".
    COLORREF mode_colour(const std::string& name) const;
};

// For white paper, and for the dark of a film.
const TracingStyle& paper_style();
const TracingStyle& film_style();

}  // namespace cephtool
