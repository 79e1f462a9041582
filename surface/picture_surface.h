// A picture in memory, for PNG files, screens and tracings burned into a radiograph.
#pragma once

#include <memory>
#include <string>

#include "surface/background.h"
#include "surface/drawn_surface.h"

namespace tool {

struct Ink;

class PictureSurface : public DrawnSurface {
 public:
    // crisp: pixel for pixel as the platform draws, wherever raster.h has a rule. smooth: antialiased, but with any
    // raster operation other than R2_COPYPEN crisp, so that a second R2_XORPEN restores every pixel.
    enum class Look { crisp, smooth };
    static constexpr int side_limit = 32'767;

    // Null for a side outside 1 to side_limit, a resolution that is not above 0, or when memory runs out.
    static std::unique_ptr<PictureSurface> create(int width, int height, Look look, COLORREF paper = RGB(255, 255, 255),
                                                  double dpi = 96);
    ~PictureSurface() override;

    // Stretched over a rectangle in logical units, over what was drawn before.
    void draw_background(const Background& picture, const RECT& where);

    CSize GetTextExtent(LPCSTR text, int count) const override;
    COLORREF GetPixel(int x, int y) const override { return pixel(x, y); }

    int width() const { return device().width_px; }
    int height() const { return device().height_px; }
    COLORREF pixel(int x, int y) const;  // CLR_INVALID outside
    std::string png() const;             // "" when memory runs out

 protected:
    void paint(const Figure& figure) override;
    void paint(const Caption& caption) override;

 private:
    struct Canvas;
    PictureSurface(const Device& device, Look look, std::unique_ptr<Canvas> canvas);
    void paint_exactly(const Figure& figure);
    void fill_exactly(const Figure& figure, Ink ink);
    void stroke_exactly(const Figure& figure, const PenStroke& stroke);
    void stamp_stroke(const Figure& figure, Ink ink, bool dashed);

    std::unique_ptr<Canvas> canvas_;
    Look look_;
};

}  // namespace tool
