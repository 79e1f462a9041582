#include "surface/svg_surface.h"

#include <algorithm>
#include <cmath>

#include "surface/svg_text.h"

namespace tool {

namespace {

// name="value", with a blank in front.
std::string attribute(std::string_view name, std::string_view value) {
    return ' ' + std::string(name) + "=\"" + xml_escaped(value) + '"';
}

std::string attribute(std::string_view name, double value) {
    return attribute(name, svg_number(value));
}

std::string pair(const DevicePoint& point) {
    return svg_number(point.x) + ',' + svg_number(point.y);
}

std::string point_list(std::span<const DevicePoint> points) {
    std::string list;
    for (const DevicePoint& point : points) list += (list.empty() ? "" : " ") + pair(point);
    return list;
}

std::string stroke_attributes(const PenStroke& stroke, COLORREF color, bool dashed) {
    std::string text = attribute("stroke", svg_color(color)) + attribute("stroke-width", stroke.width);
    if (stroke.ends == PenStroke::Ends::square) text += R"( stroke-linecap="square")";
    if (stroke.ends == PenStroke::Ends::flat) text += R"( stroke-linecap="butt")";
    if (dashed && !stroke.dashes.empty()) {
        std::string lengths;
        for (const double length : stroke.bare_dashes()) lengths += (lengths.empty() ? "" : " ") + svg_number(length);
        text += attribute("stroke-dasharray", lengths);
    }
    return text;
}

// A circle and an angle on it before it is stretched into the box's ellipse.
struct Ellipse {
    DevicePoint centre;
    double rx, ry;

    explicit Ellipse(const DeviceBox& box)
        : centre{(box.left + box.right - 1) / 2, (box.top + box.bottom - 1) / 2},
          rx(std::max((box.right - 1 - box.left) / 2, 0.0)),
          ry(std::max((box.bottom - 1 - box.top) / 2, 0.0)) {}
    // The direction of a ray, of length 1: no angles, whose sines every C library rounds in its own way. Right if the
    // ray has no length.
    DevicePoint direction(const DevicePoint& ray) const {
        const double x = (ray.x - centre.x) * ry, y = (ray.y - centre.y) * rx, length = std::sqrt(x * x + y * y);
        return length > 0 ? DevicePoint{x / length, y / length} : DevicePoint{1, 0};
    }
    DevicePoint at(const DevicePoint& direction) const {
        return {centre.x + rx * direction.x, centre.y + ry * direction.y};
    }
};

std::string ellipse_element(const Ellipse& e) {
    return "ellipse" + attribute("cx", e.centre.x) + attribute("cy", e.centre.y) + attribute("rx", e.rx) +
           attribute("ry", e.ry);
}

// Counterclockwise as seen, which is SVG's sweep 0.
std::string arc_element(const Ellipse& e, const DevicePoint& from, const DevicePoint& to) {
    const DevicePoint start = e.direction(from), end = e.direction(to);
    const double sine = start.y * end.x - start.x * end.y;  // of the angle from end to start
    if (sine == 0 && start.x * end.x + start.y * end.y > 0) return ellipse_element(e);
    const bool large = sine < 0;
    return "path" + attribute("d", "M" + pair(e.at(start)) + " A" + svg_number(e.rx) + ',' + svg_number(e.ry) +
                                       (large ? " 0 1 0 " : " 0 0 0 ") + pair(e.at(end)));
}

std::string rectangle(double x, double y, double width, double height) {
    return attribute("x", x) + attribute("y", y) + attribute("width", width) + attribute("height", height);
}

// The element's name and geometry.
std::string shape(const Figure& figure) {
    const DeviceBox& box = figure.box;
    const auto points = figure.points;
    switch (figure.kind) {
        case Figure::Kind::open:
            if (points.size() == 2)
                return "line" + attribute("x1", points[0].x) + attribute("y1", points[0].y) +
                       attribute("x2", points[1].x) + attribute("y2", points[1].y);
            return "polyline" + attribute("points", point_list(points));
        case Figure::Kind::closed: return "polygon" + attribute("points", point_list(points));
        case Figure::Kind::frame:
            return "rect" + rectangle(box.left, box.top, box.right - 1 - box.left, box.bottom - 1 - box.top);
        case Figure::Kind::area:
            return "rect" + rectangle(box.left - 0.5, box.top - 0.5, box.right - box.left, box.bottom - box.top);
        case Figure::Kind::ellipse: return ellipse_element(Ellipse(box));
        default: return arc_element(Ellipse(box), points[0], points[1]);
    }
}

bool name_byte(unsigned char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '-' ||
           c == '.' || c >= 0x80;
}

std::string xml_name(std::string_view id) {
    std::string name;
    for (const char c : id) name += name_byte(static_cast<unsigned char>(c)) ? c : '_';
    const bool starts_badly = name.empty() || (name[0] >= '0' && name[0] <= '9') || name[0] == '-' || name[0] == '.';
    return starts_badly ? '_' + name : name;
}

}  // namespace

SvgSurface::SvgSurface(int width, int height, double dpi)
    : DrawnSurface({.width_px = std::max(width, 1), .height_px = std::max(height, 1), .dpi = dpi > 0 ? dpi : 96}) {}

void SvgSurface::line(std::string_view element) {
    body_.append(2 * static_cast<std::size_t>(open_layers_ + 1), ' ');
    body_.append(element);
    body_ += '\n';
}

void SvgSurface::begin_layer(std::string_view id) {
    const std::string name = xml_name(id);
    std::string unique = name;
    for (int i = 2; std::find(ids_.begin(), ids_.end(), unique) != ids_.end(); ++i)
        unique = name + '-' + std::to_string(i);
    ids_.push_back(unique);
    line("<g" + attribute("id", unique) + '>');
    ++open_layers_;
}

void SvgSurface::end_layer() {
    if (open_layers_ == 0) return;
    --open_layers_;
    line("</g>");
}

// Outline and filling are one element where they can be.
void SvgSurface::paint(const Figure& figure) {
    const std::string element = '<' + shape(figure);
    const auto add = [&](const std::string& attributes, const Blend& blend) {
        line(element + attributes + (blend.difference ? R"( style="mix-blend-mode:difference")" : "") + "/>");
    };
    std::string fill_attributes;
    const auto fill = figure.fill ? blend_of(figure.rop, *figure.fill) : std::nullopt;
    if (fill) {
        const bool by_parity = figure.kind == Figure::Kind::closed && figure.fill_mode != WINDING;
        fill_attributes = attribute("fill", svg_color(fill->color)) + (by_parity ? R"( fill-rule="evenodd")" : "");
    }
    const auto stroke = figure.stroke ? blend_of(figure.rop, figure.stroke->color) : std::nullopt;
    if (!stroke) {
        if (fill) add(fill_attributes, *fill);
        return;
    }
    if (figure.stroke->gap) {
        const Blend gap = *blend_of(figure.rop, *figure.stroke->gap);
        add(fill_attributes + stroke_attributes(*figure.stroke, gap.color, false), gap);
        fill_attributes.clear();
    }
    add(fill_attributes + stroke_attributes(*figure.stroke, stroke->color, true), *stroke);
}

void SvgSurface::paint(const Caption& caption) {
    // The cell of a face that is not known is taken to be that of common sans serif faces.
    const CellShape shape = caption.face.shape.value_or(CellShape{0.905, 0.212});
    const double em = caption.face.em_px(shape);
    // Text is placed by pixel edges; the drawing's whole numbers are pixel middles.
    const double x = caption.x - 0.5, baseline = caption.y - 0.5 + baseline_drop(shape, em, caption.align);
    const char* anchor = "";
    double shift = 0;
    switch (caption.align & TA_CENTER) {
        case TA_CENTER: anchor = R"( text-anchor="middle")", shift = 0.5; break;
        case TA_RIGHT: anchor = R"( text-anchor="end")", shift = 1; break;
        default: break;
    }
    if (caption.background) {
        const double width = em / 2 * caption.bytes;  // the viewer's font is not known here
        line("<rect" +
             rectangle(x - shift * width, baseline - shape.ascent * em, width, (shape.ascent + shape.descent) * em) +
             attribute("fill", svg_color(*caption.background)) + "/>");
    }
    const Typeface& face = caption.face;
    std::string decoration = face.underline ? "underline" : "";
    if (face.strike_out) decoration += decoration.empty() ? "line-through" : " line-through";
    line("<text" + attribute("x", x) + attribute("y", baseline) + anchor + attribute("font-family", face.families) +
         attribute("font-size", em) + (face.weight == FW_NORMAL ? "" : attribute("font-weight", face.weight)) +
         (face.italic ? R"( font-style="italic")" : "") +
         (decoration.empty() ? "" : attribute("text-decoration", decoration)) +
         attribute("fill", svg_color(caption.color)) + R"( xml:space="preserve">)" + xml_escaped(caption.text) +
         "</text>");
}

void SvgSurface::add_image(std::string_view href, const RECT& where) {
    const DeviceBox box = device_box(where);
    line("<image" + rectangle(box.left - 0.5, box.top - 0.5, box.right - box.left, box.bottom - box.top) +
         R"( preserveAspectRatio="none")" + attribute("href", href) + "/>");
}

bool SvgSurface::draw_background(std::string_view file, const RECT& where) {
    const bool jpeg = file.starts_with("\xFF\xD8\xFF");
    if (!jpeg && !file.starts_with("\x89PNG\r\n\x1A\n")) return false;
    add_image((jpeg ? "data:image/jpeg;base64," : "data:image/png;base64,") + base64(file), where);
    return true;
}

void SvgSurface::link_background(std::string_view href, const RECT& where) {
    add_image(href, where);
}

std::string SvgSurface::svg() const {
    constexpr double mm_per_inch = 25.4, screen_dpi = 96;
    const auto length = [this](int pixels) {
        return device().dpi == screen_dpi ? std::to_string(pixels)
                                          : svg_number(pixels * mm_per_inch / device().dpi) + "mm";
    };
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("width", length(device().width_px)) +
                       attribute("height", length(device().height_px)) + " viewBox=\"-0.5 -0.5 " +
                       std::to_string(device().width_px) + ' ' + std::to_string(device().height_px) +
                       "\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n" + body_;
    for (int layer = open_layers_; layer > 0; --layer)
        text.append(2 * static_cast<std::size_t>(layer), ' ').append("</g>\n");
    return text + "</svg>\n";
}

}  // namespace tool
