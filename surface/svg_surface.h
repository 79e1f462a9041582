// A drawing for editors and browsers: shapes as shapes, text as text, layers as groups with ids. Needs no library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "surface/drawn_surface.h"

namespace tool {

// A unit of the drawing is a device pixel, a whole number the middle of a pixel. Text sizes and places are right for
// the typefaces asked for; a viewer without them takes others. GetTextExtent is CDC's own estimate. A resolution
// that is not above 0 counts as 96.
class SvgSurface : public DrawnSurface {
 public:
    // At 96 dpi the drawing's size is given in pixels, else in millimetres. Sides below 1 count as 1.
    SvgSurface(int width, int height, double dpi = 96);

    // What is drawn until end_layer is a group. Bytes of the id (UTF-8) that an XML name can't have become "_", a
    // second layer of a name gets a number behind it. Layers may lie in layers.
    void begin_layer(std::string_view id);
    void end_layer();  // nothing when no layer is open

    // A JPEG or PNG file's bytes inside the drawing, stretched over a rectangle in logical units; false for anything
    // else.
    bool draw_background(std::string_view file, const RECT& where);
    // The same as a link (URL or relative path in UTF-8), which stays the host's to keep valid.
    void link_background(std::string_view href, const RECT& where);

    // The whole drawing, open layers closed.
    std::string svg() const;

 protected:
    void paint(const Figure& figure) override;
    void paint(const Caption& caption) override;

 private:
    void add_image(std::string_view href, const RECT& where);
    void line(std::string_view element);

    std::string body_;
    std::vector<std::string> ids_;
    int open_layers_ = 0;
};

}  // namespace tool
