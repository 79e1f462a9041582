// What all drawing surfaces share: map modes, device capabilities, and the operations of CDC as figures and captions.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "framework/drawing.h"
#include "surface/figure.h"
#include "surface/typeface.h"

namespace tool {

struct Device {
    int width_px, height_px;
    double dpi;
    double dash_px = 1;  // a step in the dashes of thin pens
};

// The origin is the upper left corner in every map mode; in all but MM_TEXT y points up, so that what is to be seen has
// negative y. A unit of the metric modes has its true length at the device's resolution.
class DrawnSurface : public CDC {
 public:
    using CDC::SelectObject;

    // What was set before; 0, and no change, for a mode without units of its own (isotropic, anisotropic, unknown).
    int set_map_mode(int mode);
    // Behind text and in the gaps of dashed thin lines while the background mode is OPAQUE; white at first.
    COLORREF set_background_color(COLORREF color);

    int GetMapMode() const override { return map_mode_; }
    int GetDeviceCaps(int index) const override;

    BOOL LineTo(int x, int y) override;
    BOOL Polyline(const POINT* points, int count) override;
    BOOL Polygon(const POINT* points, int count) override;
    BOOL Rectangle(int left, int top, int right, int bottom) override;
    BOOL Ellipse(int left, int top, int right, int bottom) override;
    BOOL Arc(int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) override;
    BOOL FillRgn(CRgn* region, CBrush* brush) override;
    void FillRect(const RECT* rect, CBrush* brush) override;
    void FrameRect(const RECT* rect, CBrush* brush) override;
    BOOL TextOut(int x, int y, LPCSTR text, int count) override;

 protected:
    explicit DrawnSurface(const Device& device) : device_(device) {}

    virtual void paint(const Figure& figure) = 0;
    virtual void paint(const Caption& caption) = 0;

    const Device& device() const { return device_; }
    double pixels_a_unit() const;
    DevicePoint device_point(double x, double y) const;
    DeviceBox device_box(const RECT& rect) const;

 private:
    std::optional<PenStroke> current_stroke() const;
    std::optional<COLORREF> current_fill() const;
    std::span<const DevicePoint> device_points(const POINT* points, int count);

    Device device_;
    int map_mode_ = MM_TEXT;
    COLORREF background_ = RGB(255, 255, 255);
    std::vector<DevicePoint> points_;  // of the figure being painted; kept for its memory
};

// The first `count` bytes of a text in code page 932, up to a NUL, as UTF-8; none for a negative count.
std::string utf8_of(LPCSTR text, int count);

}  // namespace tool
