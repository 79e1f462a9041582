// Pages for a printer: PDF with real lengths, shapes as shapes and text as text.
#pragma once

#include <memory>
#include <string>

#include "surface/background.h"
#include "surface/drawn_surface.h"

namespace tool {

// A surface that prints (IsPrinting). A device pixel is 1 / dpi inch; the dashes of thin pens keep the size that they
// have on a screen of 96 dpi.
class PdfSurface : public DrawnSurface {
 public:
    // Null for a page side outside 1 mm to 5 m, a resolution outside 72 to 4800, or when memory runs out.
    static std::unique_ptr<PdfSurface> create(double width_mm, double height_mm, int dpi = 600);
    ~PdfSurface() override;

    // Ends the page that is being drawn on; the next begins empty. Pens, fonts and the map mode stay.
    void new_page();

    // Stretched over a rectangle in logical units, over what was drawn before. A JPEG keeps its compression.
    void draw_background(const Background& picture, const RECT& where);

    CSize GetTextExtent(LPCSTR text, int count) const override;

    // Ends the document: what is drawn afterwards is lost. "" when memory ran out.
    std::string pdf();

 protected:
    void paint(const Figure& figure) override;
    void paint(const Caption& caption) override;

 private:
    struct Document;
    PdfSurface(const Device& device, std::unique_ptr<Document> document);

    std::unique_ptr<Document> document_;
};

}  // namespace tool
