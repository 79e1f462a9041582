// One line of text laid out by Pango in the platform's cell.
#pragma once

#include "surface/cairo_handles.h"
#include "surface/typeface.h"

namespace tool {

class TextRun {
 public:
    // `jagged`: without smoothing, whatever the typeface asks for.
    TextRun(const std::string& text, const Typeface& face, bool jagged);

    double width_px() const { return width_px_; }
    double height_px() const { return (shape_.ascent + shape_.descent) * em_px_; }

    // At the caption's place and in its colour, over its background.
    void paint(cairo_t* context, const Caption& caption) const;

 private:
    PangoLayoutOwner layout_;
    CellShape shape_;
    double em_px_, width_px_;
};

// The extent of a text in logical units of `pixels` device pixels.
CSize text_extent(LPCSTR text, int count, const CFont& font, double pixels, bool jagged);

}  // namespace tool
