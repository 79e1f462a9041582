// A font as surfaces draw it, and where a text stands in its cell.
#pragma once

#include <optional>
#include <string>

#include "framework/drawing.h"

namespace tool {

// Of a face, in units of its em; both positive. Their sum is the height of the cell.
struct CellShape {
    double ascent, descent;
};

struct Typeface {
    std::string families;            // UTF-8, the asked one first, then what may stand for it, separated by ", "
    std::optional<CellShape> shape;  // for a face whose shape is known without looking into its file
    double size_px;                  // above 0 the height of the cell, below 0 the em's negative
    int weight;
    bool italic, underline, strike_out, jagged, japanese;

    // `known` is used when the face's own shape is not known.
    double em_px(const CellShape& known) const;
};

Typeface typeface_of(const CFont& font, double pixels);

// How far below the point given to TextOut the baseline lies, for the vertical part of a text alignment.
double baseline_drop(const CellShape& shape, double em_px, UINT align);

struct Caption {
    std::string text;  // UTF-8
    int bytes;         // its length in code page 932, which a face of fixed width fills half an em each
    double x, y;       // device pixels, pixel edges as whole numbers
    UINT align;
    Typeface face;
    COLORREF color;
    std::optional<COLORREF> background;
};

}  // namespace tool
