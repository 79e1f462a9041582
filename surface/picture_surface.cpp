#include "surface/picture_surface.h"

#include <algorithm>
#include <cmath>

#include "platform/numbers.h"
#include "surface/cairo_figure.h"
#include "surface/png_file.h"
#include "surface/raster.h"
#include "surface/text_run.h"

namespace tool {

namespace {

// The library's own rounding would turn -10.0 into -9.
std::int32_t nearest(double coordinate) {
    return truncated(std::floor(coordinate + 0.5));
}

POINT pixel_of(const DevicePoint& point) {
    return {nearest(point.x), nearest(point.y)};
}

RECT pixels_of(const DeviceBox& box) {
    return {nearest(box.left), nearest(box.top), nearest(box.right), nearest(box.bottom)};
}

DashedInk dashed_ink(const PenStroke& stroke, int rop) {
    DashedInk ink{ink_of(stroke.color, rop)};
    for (const double dash : stroke.dashes) ink.dashes.push_back(std::max(rounded(dash), 1));
    if (stroke.gap) ink.gap = ink_of(*stroke.gap, rop);
    return ink;
}

// Pens of an even width have their middle on the edge between two pixels.
double middle_of(double width) {
    return rounded(width) % 2 ? 0 : -0.5;
}

bool small_enough(const RECT& box) {
    return std::int64_t{box.right} - box.left <= Raster::ellipse_side_limit &&
           std::int64_t{box.bottom} - box.top <= Raster::ellipse_side_limit;
}

// Whether the outline is one that Raster::ellipse draws.
bool by_ellipse_rule(const Figure& figure) {
    return figure.stroke && figure.stroke->thin() && figure.stroke->dashes.empty() &&
           small_enough(pixels_of(figure.box));
}

bool by_wide_rule(const PenStroke& stroke) {
    return stroke.width <= Raster::wide_limit && (stroke.ends != PenStroke::Ends::round || stroke.dashes.empty());
}

bool along_an_axis(const std::vector<POINT>& points) {
    return points.size() == 2 && (points[0].x == points[1].x || points[0].y == points[1].y);
}

bool has_corners(const Figure& figure) {
    return figure.kind == Figure::Kind::open || figure.kind == Figure::Kind::closed ||
           figure.kind == Figure::Kind::frame;
}

// The way that a thin pen goes. Kept: a rectangle starts at its upper right corner and runs left, down, right, up,
// which dashes show.
std::vector<POINT> corners_of(const Figure& figure, const std::vector<POINT>& points) {
    if (figure.kind == Figure::Kind::frame) {
        const RECT box = pixels_of(figure.box);
        const int right = box.right - 1, bottom = box.bottom - 1;
        return {{right, box.top}, {box.left, box.top}, {box.left, bottom}, {right, bottom}, {right, box.top}};
    }
    std::vector<POINT> corners = points;
    if (figure.kind == Figure::Kind::closed && !points.empty()) corners.push_back(points.front());
    return corners;
}

// The part of the picture that a figure and its pen can touch.
RECT covered_part(const Figure& figure, double pen_width, int width, int height) {
    DeviceBox box = figure.box;
    if (figure.kind == Figure::Kind::open || figure.kind == Figure::Kind::closed) {
        if (figure.points.empty()) return {};
        const auto [left, right] = std::ranges::minmax(figure.points, {}, &DevicePoint::x);
        const auto [top, bottom] = std::ranges::minmax(figure.points, {}, &DevicePoint::y);
        box = {left.x, top.y, right.x, bottom.y};
    }
    const double margin = pen_width + 2;  // square ends of slanted lines reach 0.71 of the width
    return {truncated(std::clamp(box.left - margin, 0.0, double(width))),
            truncated(std::clamp(box.top - margin, 0.0, double(height))),
            truncated(std::clamp(box.right + margin, 0.0, double(width))),
            truncated(std::clamp(box.bottom + margin, 0.0, double(height)))};
}

}  // namespace

struct PictureSurface::Canvas {
    CairoSurface surface;
    CairoContext context;
    std::vector<POINT> points;  // of the figure being painted; kept for its memory

    int width() const { return cairo_image_surface_get_width(surface.get()); }
    int height() const { return cairo_image_surface_get_height(surface.get()); }
    std::uint32_t* pixels() const {
        return reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface.get()));
    }
    std::ptrdiff_t stride() const { return cairo_image_surface_get_stride(surface.get()) / 4; }

    // Writes pixels without Cairo.
    template <class Write>
    void draw(Write write) {
        cairo_surface_flush(surface.get());
        Raster raster(pixels(), width(), height(), stride());
        write(raster);
        cairo_surface_mark_dirty(surface.get());
    }

    // What `cover` draws on a context, without smoothing, in one ink.
    template <class Cover>
    void stamp(const Figure& figure, double pen_width, Ink ink, Cover cover);
};

template <class Cover>
void PictureSurface::Canvas::stamp(const Figure& figure, double pen_width, Ink ink, Cover cover) {
    if (ink.rop == R2_COPYPEN) {  // only in crisp pictures, whose context does not smooth
        set_color(context.get(), RGB(static_cast<int>(ink.pixel >> 16), static_cast<int>(ink.pixel >> 8),
                                     static_cast<int>(ink.pixel)));
        cover(context.get());
        return;
    }
    const RECT part = covered_part(figure, pen_width, width(), height());
    const int part_width = part.right - part.left, part_height = part.bottom - part.top;
    if (part_width <= 0 || part_height <= 0) return;
    const CairoSurface mask(cairo_image_surface_create(CAIRO_FORMAT_A8, part_width, part_height));
    const CairoContext masking(cairo_create(mask.get()));
    cairo_set_antialias(masking.get(), CAIRO_ANTIALIAS_NONE);
    cairo_translate(masking.get(), -part.left, -part.top);
    cover(masking.get());
    cairo_surface_flush(mask.get());
    const unsigned char* row = cairo_image_surface_get_data(mask.get());
    if (!row) return;  // no memory
    draw([&](Raster& raster) {
        for (int y = part.top; y < part.bottom; ++y, row += cairo_image_surface_get_stride(mask.get())) {
            const unsigned char* const end = row + part_width;
            for (const unsigned char* to = row; to != end;) {
                const unsigned char* const from = std::find_if(to, end, [](unsigned char alpha) { return alpha != 0; });
                to = std::find(from, end, 0);
                raster.row(y, part.left + (from - row), part.left + (to - row), ink);
            }
        }
    });
}

std::unique_ptr<PictureSurface> PictureSurface::create(int width, int height, Look look, COLORREF paper, double dpi) {
    if (width < 1 || height < 1 || width > side_limit || height > side_limit || !(dpi > 0)) return nullptr;
    auto canvas = std::make_unique<Canvas>();
    canvas->surface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    canvas->context.reset(cairo_create(canvas->surface.get()));
    if (cairo_status(canvas->context.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    set_color(canvas->context.get(), paper);
    cairo_paint(canvas->context.get());
    if (look == Look::crisp) cairo_set_antialias(canvas->context.get(), CAIRO_ANTIALIAS_NONE);
    const Device device{.width_px = width, .height_px = height, .dpi = dpi};
    return std::unique_ptr<PictureSurface>(new PictureSurface(device, look, std::move(canvas)));
}

PictureSurface::PictureSurface(const Device& device, Look look, std::unique_ptr<Canvas> canvas)
    : DrawnSurface(device), canvas_(std::move(canvas)), look_(look) {}

PictureSurface::~PictureSurface() = default;

void PictureSurface::draw_background(const Background& picture, const RECT& where) {
    paint_background(canvas_->context.get(), picture, device_box(where));
}

CSize PictureSurface::GetTextExtent(LPCSTR text, int count) const {
    return text_extent(text, count, *GetCurrentFont(), pixels_a_unit(), look_ == Look::crisp);
}

COLORREF PictureSurface::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width() || y >= height()) return CLR_INVALID;
    cairo_surface_flush(canvas_->surface.get());
    const std::uint32_t value = canvas_->pixels()[y * canvas_->stride() + x];
    return RGB(static_cast<int>(value >> 16 & 0xFF), static_cast<int>(value >> 8 & 0xFF),
               static_cast<int>(value & 0xFF));
}

std::string PictureSurface::png() const {
    cairo_surface_flush(canvas_->surface.get());
    return png_file(canvas_->pixels(), width(), height(), canvas_->stride(), device().dpi);
}

void PictureSurface::paint(const Figure& figure) {
    if (look_ == Look::crisp || figure.rop != R2_COPYPEN)
        paint_exactly(figure);
    else
        paint_figure(canvas_->context.get(), figure);
}

void PictureSurface::paint(const Caption& caption) {
    TextRun(caption.text, caption.face, look_ == Look::crisp).paint(canvas_->context.get(), caption);
}

void PictureSurface::paint_exactly(const Figure& figure) {
    canvas_->points.clear();
    for (const DevicePoint& point : figure.points) canvas_->points.push_back(pixel_of(point));
    if (figure.fill) fill_exactly(figure, ink_of(*figure.fill, figure.rop));
    if (figure.stroke) stroke_exactly(figure, *figure.stroke);
}

// The outline's own pixels are left out where it paints each pixel of its rule once, for the sake of R2_XORPEN.
void PictureSurface::fill_exactly(const Figure& figure, Ink ink) {
    const RECT box = pixels_of(figure.box);
    switch (figure.kind) {
        case Figure::Kind::closed:
            canvas_->draw([&](Raster& r) { r.region(canvas_->points, figure.fill_mode, ink); });
            break;
        case Figure::Kind::area: canvas_->draw([&](Raster& r) { r.box(box, ink); }); break;
        case Figure::Kind::frame:
            canvas_->draw([&](Raster& r) { r.box({box.left + 1, box.top + 1, box.right - 1, box.bottom - 1}, ink); });
            break;
        case Figure::Kind::ellipse:
            if (!small_enough(box))
                canvas_->stamp(figure, 0, ink, [&](cairo_t* context) { fill_figure(context, figure); });
            else if (!by_ellipse_rule(figure))
                canvas_->draw([&](Raster& r) { r.ellipse(box, std::nullopt, ink); });
            break;
        default: break;
    }
}

void PictureSurface::stroke_exactly(const Figure& figure, const PenStroke& stroke) {
    const RECT box = pixels_of(figure.box);
    const std::vector<POINT>& points = canvas_->points;
    const DashedInk ink = dashed_ink(stroke, figure.rop);
    if (figure.kind == Figure::Kind::ellipse && by_ellipse_rule(figure)) {
        const auto fill = figure.fill ? std::optional(ink_of(*figure.fill, figure.rop)) : std::nullopt;
        canvas_->draw([&](Raster& r) { r.ellipse(box, ink.ink, fill); });
    } else if (figure.kind == Figure::Kind::arc && by_ellipse_rule(figure)) {
        canvas_->draw([&](Raster& r) { r.arc(box, points[0], points[1], ink.ink); });
    } else if (has_corners(figure) && stroke.thin()) {
        canvas_->draw([&](Raster& r) { r.polyline(corners_of(figure, points), ink); });
    } else if (figure.kind == Figure::Kind::open && along_an_axis(points) && by_wide_rule(stroke)) {
        const int width = rounded(stroke.width);
        canvas_->draw([&](Raster& r) {
            if (stroke.ends == PenStroke::Ends::round)
                r.wide_line(points[0], points[1], width, ink.ink);
            else
                r.wide_line_square(points[0], points[1], width, stroke.ends == PenStroke::Ends::flat ? 0 : width / 2,
                                   ink);
        });
    } else {
        if (ink.gap) stamp_stroke(figure, *ink.gap, false);
        stamp_stroke(figure, ink.ink, true);
    }
}

void PictureSurface::stamp_stroke(const Figure& figure, Ink ink, bool dashed) {
    const double width = figure.stroke->width, shift = middle_of(width);
    canvas_->stamp(figure, width, ink, [&](cairo_t* context) { stroke_figure(context, figure, dashed, shift); });
}

}  // namespace tool
