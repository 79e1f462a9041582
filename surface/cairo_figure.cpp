#include "surface/cairo_figure.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tool {

namespace {

constexpr double farthest = 4.0e6;

double bounded(double coordinate) {
    return std::clamp(coordinate, -farthest, farthest);
}

DeviceBox bounded(const DeviceBox& box) {
    return {bounded(box.left), bounded(box.top), bounded(box.right), bounded(box.bottom)};
}

DeviceBox moved(const DeviceBox& box, double by) {
    return {box.left + by, box.top + by, box.right + by, box.bottom + by};
}

void add_points(cairo_t* context, std::span<const DevicePoint> points, double shift) {
    for (const DevicePoint& point : points) cairo_line_to(context, bounded(point.x) + shift, bounded(point.y) + shift);
}

// Counterclockwise, as seen, which is Cairo's negative direction; angles are those on the circle before stretching.
void add_ellipse(cairo_t* context, const DeviceBox& box, double from, double to) {
    const double rx = (box.right - 1 - box.left) / 2, ry = (box.bottom - 1 - box.top) / 2;
    if (rx <= 0 || ry <= 0) {  // a line, as Cairo can't stretch a circle to nothing
        cairo_move_to(context, box.left, box.top);
        cairo_line_to(context, box.right - 1, box.bottom - 1);
        return;
    }
    cairo_matrix_t before;
    cairo_get_matrix(context, &before);
    cairo_translate(context, box.left + rx, box.top + ry);
    cairo_scale(context, rx, ry);
    cairo_new_sub_path(context);
    cairo_arc_negative(context, 0, 0, 1, from, to);
    cairo_set_matrix(context, &before);
}

double angle_of(const DeviceBox& box, const DevicePoint& point) {
    const double rx = (box.right - 1 - box.left) / 2, ry = (box.bottom - 1 - box.top) / 2;
    return std::atan2((point.y - box.top - ry) * rx, (point.x - box.left - rx) * ry);
}

// Whole numbers are the middles of pixels to the figure and their corners to Cairo.
void add_path(cairo_t* context, const Figure& figure, double shift) {
    const double to_cairo = 0.5 + shift;
    const DeviceBox pixels = bounded(figure.box), box = moved(pixels, to_cairo);
    constexpr double turn = 2 * std::numbers::pi;
    cairo_new_path(context);
    switch (figure.kind) {
        case Figure::Kind::open: add_points(context, figure.points, to_cairo); break;
        case Figure::Kind::closed:
            add_points(context, figure.points, to_cairo);
            cairo_close_path(context);
            break;
        case Figure::Kind::frame:
            cairo_rectangle(context, box.left, box.top, box.right - 1 - box.left, box.bottom - 1 - box.top);
            break;
        case Figure::Kind::area:
            cairo_rectangle(context, box.left - 0.5, box.top - 0.5, box.right - box.left, box.bottom - box.top);
            break;
        case Figure::Kind::ellipse:
            add_ellipse(context, box, turn, 0);
            cairo_close_path(context);
            break;
        case Figure::Kind::arc: {
            const double from = angle_of(pixels, figure.points[0]), to = angle_of(pixels, figure.points[1]);
            add_ellipse(context, box, from, from == to ? from - turn : to);
            break;
        }
    }
}

cairo_line_cap_t cap_of(PenStroke::Ends ends) {
    switch (ends) {
        case PenStroke::Ends::flat: return CAIRO_LINE_CAP_BUTT;
        case PenStroke::Ends::square: return CAIRO_LINE_CAP_SQUARE;
        default: return CAIRO_LINE_CAP_ROUND;
    }
}

// Sets colour and operator; false when nothing is to be painted.
bool set_blend(cairo_t* context, int rop, COLORREF color) {
    const auto blend = blend_of(rop, color);
    if (!blend) return false;
    set_color(context, blend->color);
    cairo_set_operator(context, blend->difference ? CAIRO_OPERATOR_DIFFERENCE : CAIRO_OPERATOR_OVER);
    return true;
}

// Shows pixels that someone else owns; Cairo only reads them.
CairoSurface surface_of(const Background& picture) {
    auto* const bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(picture.pixels.data()));
    CairoSurface surface(cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, picture.width, picture.height,
                                                             picture.width * 4));
    if (!picture.jpeg.empty()) {
        // A page is written after the picture may be gone.
        auto* const file = new std::string(picture.jpeg);
        const auto release = [](void* owned) { delete static_cast<std::string*>(owned); };
        const auto status = cairo_surface_set_mime_data(surface.get(), CAIRO_MIME_TYPE_JPEG,
                                                        reinterpret_cast<const unsigned char*>(file->data()),
                                                        file->size(), release, file);
        if (status != CAIRO_STATUS_SUCCESS) release(file);
    }
    return surface;
}

}  // namespace

cairo_status_t append_bytes(void* string, const unsigned char* bytes, unsigned int count) try {
    static_cast<std::string*>(string)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
} catch (...) {
    return CAIRO_STATUS_NO_MEMORY;
}

void set_color(cairo_t* context, COLORREF color) {
    cairo_set_source_rgb(context, GetRValue(color) / 255.0, GetGValue(color) / 255.0, GetBValue(color) / 255.0);
}

void fill_figure(cairo_t* context, const Figure& figure) {
    add_path(context, figure, 0);
    cairo_set_fill_rule(context, figure.fill_mode == WINDING ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
    cairo_fill(context);
}

void stroke_figure(cairo_t* context, const Figure& figure, bool dashed, double shift) {
    const PenStroke& stroke = *figure.stroke;
    cairo_set_line_width(context, stroke.width);
    cairo_set_line_cap(context, cap_of(stroke.ends));
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    if (dashed && !stroke.dashes.empty()) {
        const std::vector<double> dashes = stroke.bare_dashes();
        cairo_set_dash(context, dashes.data(), static_cast<int>(dashes.size()), 0);
    } else {
        cairo_set_dash(context, nullptr, 0, 0);
    }
    add_path(context, figure, shift);
    cairo_stroke(context);
}

void paint_figure(cairo_t* context, const Figure& figure) {
    if (figure.fill && set_blend(context, figure.rop, *figure.fill)) fill_figure(context, figure);
    if (figure.stroke) {
        if (figure.stroke->gap && set_blend(context, figure.rop, *figure.stroke->gap))
            stroke_figure(context, figure, false);
        if (set_blend(context, figure.rop, figure.stroke->color)) stroke_figure(context, figure);
    }
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
}

void paint_background(cairo_t* context, const Background& picture, const DeviceBox& box) {
    if (!picture || box.right <= box.left || box.bottom <= box.top) return;
    const SavedState state(context);
    const DeviceBox place = bounded(box);
    const CairoSurface surface = surface_of(picture);
    cairo_rectangle(context, place.left, place.top, place.right - place.left, place.bottom - place.top);
    cairo_clip(context);
    cairo_translate(context, place.left, place.top);
    cairo_scale(context, (place.right - place.left) / picture.width, (place.bottom - place.top) / picture.height);
    cairo_set_source_surface(context, surface.get(), 0, 0);
    // In a picture the border's pixels would otherwise blend with the paper; on a page this would cost the JPEG its
    // compression.
    if (cairo_surface_get_type(cairo_get_target(context)) == CAIRO_SURFACE_TYPE_IMAGE)
        cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
    cairo_paint(context);
}

}  // namespace tool
