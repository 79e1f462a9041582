// A lateral film's landmarks and their tracing. Nothing here knows Windows: a CDC is a window, a printer or a picture.
#pragma once

#include <Records.h>
#include <framework/drawing.h>

namespace example {

// From lines of name,x,y, with the scale in a line "# scale_mm_per_px=0.1". False when none of it is a landmark.
bool read_face(const char* path, tagPOINTLAT* face);

struct View {
    double zoom;
    CPoint offset;  // device pixels that the film is scrolled by
};

// The name of the landmark, or of the traced line, that is seen at a device point or beside it; null for neither.
const char* name_of_hit(tagPOINTLAT& face, const View& view, CPoint at);

// The profile and the jaws as curves, the planes as lines, the landmarks as dots.
void draw_face(CDC& dc, tagPOINTLAT& face, const View& view);

}  // namespace example
