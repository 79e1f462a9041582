#include "surface/drawn_surface.h"

#include <algorithm>
#include <utility>

#include "CodePage.h"
#include "platform/numbers.h"

namespace tool {

namespace {

constexpr double mm_per_inch = 25.4;

// Length of a unit in mm; 0 in map modes that have none.
double unit_mm(int map_mode) {
    switch (map_mode) {
        case MM_LOMETRIC: return 0.1;
        case MM_HIMETRIC: return 0.01;
        case MM_LOENGLISH: return mm_per_inch / 100;
        case MM_HIENGLISH: return mm_per_inch / 1000;
        case MM_TWIPS: return mm_per_inch / 1440;
        default: return 0;
    }
}

std::optional<COLORREF> color_of(const CBrush* brush) {
    LOGBRUSH description;
    if (!brush || !brush->GetLogBrush(&description) || description.lbStyle != BS_SOLID) return std::nullopt;
    return description.lbColor;
}

}  // namespace

std::string utf8_of(LPCSTR text, int count) {
    const char* end = text + std::max(count, 0);
    return Utf8FromCodePage932(std::string(text, std::find(text, end, '\0')).c_str());
}

int DrawnSurface::set_map_mode(int mode) {
    return mode == MM_TEXT || unit_mm(mode) > 0 ? std::exchange(map_mode_, mode) : 0;
}

COLORREF DrawnSurface::set_background_color(COLORREF color) {
    return std::exchange(background_, color);
}

int DrawnSurface::GetDeviceCaps(int index) const {
    const auto mm = [this](int pixels) { return std::max(rounded(pixels * mm_per_inch / device_.dpi), 1); };
    switch (index) {
        case HORZSIZE: return mm(device_.width_px);
        case VERTSIZE: return mm(device_.height_px);
        case HORZRES: return device_.width_px;
        case VERTRES: return device_.height_px;
        case BITSPIXEL: return 32;
        case LOGPIXELSX:
        case LOGPIXELSY: return rounded(device_.dpi);
        default: return 0;
    }
}

double DrawnSurface::pixels_a_unit() const {
    return map_mode_ == MM_TEXT ? 1.0 : unit_mm(map_mode_) * device_.dpi / mm_per_inch;
}

DevicePoint DrawnSurface::device_point(double x, double y) const {
    if (map_mode_ == MM_TEXT) return {x, y};
    const double pixels = pixels_a_unit();
    return {x * pixels, -y * pixels};
}

DeviceBox DrawnSurface::device_box(const RECT& rect) const {
    const DevicePoint a = device_point(rect.left, rect.top), b = device_point(rect.right, rect.bottom);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

std::span<const DevicePoint> DrawnSurface::device_points(const POINT* points, int count) {
    points_.clear();
    for (int i = 0; i < count; ++i) points_.push_back(device_point(points[i].x, points[i].y));
    return points_;
}

std::optional<PenStroke> DrawnSurface::current_stroke() const {
    const auto gap = GetBkMode() == OPAQUE ? std::optional(background_) : std::nullopt;
    return stroke_of(*GetCurrentPen(), pixels_a_unit(), device_.dash_px, gap);
}

std::optional<COLORREF> DrawnSurface::current_fill() const {
    return color_of(GetCurrentBrush());
}

BOOL DrawnSurface::LineTo(int x, int y) {
    const POINT ends[] = {GetCurrentPosition(), {x, y}};
    Polyline(ends, 2);
    return CDC::LineTo(x, y);
}

BOOL DrawnSurface::Polyline(const POINT* points, int count) {
    if (!points || count < 2) return FALSE;
    paint(Figure{.kind = Figure::Kind::open,
                 .points = device_points(points, count),
                 .stroke = current_stroke(),
                 .rop = GetROP2()});
    return TRUE;
}

BOOL DrawnSurface::Polygon(const POINT* points, int count) {
    if (!points || count < 2) return FALSE;
    paint(Figure{.kind = Figure::Kind::closed,
                 .points = device_points(points, count),
                 .stroke = current_stroke(),
                 .fill = current_fill(),
                 .rop = GetROP2()});
    return TRUE;
}

BOOL DrawnSurface::Rectangle(int left, int top, int right, int bottom) {
    DeviceBox box = device_box({left, top, right, bottom});
    const double width = box.right - box.left, height = box.bottom - box.top;
    if (width <= 0 || height <= 0 || (width <= 1 && height <= 1)) return TRUE;
    Figure figure{.kind = Figure::Kind::frame, .stroke = current_stroke(), .fill = current_fill(), .rop = GetROP2()};
    // Kept: without an outline the filled part is a pixel smaller, as the platform fills it.
    if (!figure.stroke) figure.kind = Figure::Kind::area, box.right -= 1, box.bottom -= 1;
    figure.box = box;
    paint(figure);
    return TRUE;
}

BOOL DrawnSurface::Ellipse(int left, int top, int right, int bottom) {
    paint(Figure{.kind = Figure::Kind::ellipse,
                 .box = device_box({left, top, right, bottom}),
                 .stroke = current_stroke(),
                 .fill = current_fill(),
                 .rop = GetROP2()});
    return TRUE;
}

BOOL DrawnSurface::Arc(int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) {
    const DevicePoint rays[] = {device_point(startX, startY), device_point(endX, endY)};
    paint(Figure{.kind = Figure::Kind::arc,
                 .points = rays,
                 .box = device_box({left, top, right, bottom}),
                 .stroke = current_stroke(),
                 .rop = GetROP2()});
    return TRUE;
}

BOOL DrawnSurface::FillRgn(CRgn* region, CBrush* brush) {
    if (!region || !region->Exists() || !brush || !brush->Exists()) return FALSE;
    const std::vector<POINT>& points = region->GetPoints();
    paint(Figure{.kind = Figure::Kind::closed,
                 .points = device_points(points.data(), static_cast<int>(points.size())),
                 .fill = color_of(brush),
                 .fill_mode = region->GetPolyFillMode(),
                 .rop = GetROP2()});
    return TRUE;
}

// Kept: a brush alone copies its colour whatever the raster operation is.
void DrawnSurface::FillRect(const RECT* rect, CBrush* brush) {
    if (rect) paint(Figure{.kind = Figure::Kind::area, .box = device_box(*rect), .fill = color_of(brush)});
}

void DrawnSurface::FrameRect(const RECT* rect, CBrush* brush) {
    if (!rect) return;
    const int left = std::min(rect->left, rect->right), right = std::max(rect->left, rect->right);
    const int top = std::min(rect->top, rect->bottom), bottom = std::max(rect->top, rect->bottom);
    if (left == right || top == bottom) return;
    for (const RECT& side : {RECT{left, top, right, top + 1}, RECT{left, bottom - 1, right, bottom},
                             RECT{left, top, left + 1, bottom}, RECT{right - 1, top, right, bottom}})
        FillRect(&side, brush);
}

BOOL DrawnSurface::TextOut(int x, int y, LPCSTR text, int count) {
    if (!text) return FALSE;
    CPoint at(x, y);
    if (GetTextAlign() & TA_UPDATECP) {
        at = GetCurrentPosition();
        const int width = GetTextExtent(text, count).cx;
        switch (GetTextAlign() & TA_CENTER) {
            case TA_LEFT: MoveTo(at.x + width, at.y); break;
            case TA_RIGHT: MoveTo(at.x - width, at.y); break;
            default: break;
        }
    }
    const DevicePoint place = device_point(at.x, at.y);
    const auto length = static_cast<int>(std::find(text, text + std::max(count, 0), '\0') - text);
    paint(Caption{utf8_of(text, count), length, place.x, place.y, GetTextAlign(),
                  typeface_of(*GetCurrentFont(), pixels_a_unit()), GetTextColor(),
                  GetBkMode() == OPAQUE ? std::optional(background_) : std::nullopt});
    return TRUE;
}

}  // namespace tool
