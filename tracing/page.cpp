#include "tracing/page.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "base/columns.h"
#include "tracing/canvas.h"

namespace cephtool {
namespace {

constexpr double margin_mm = 9;  // round a tracing without a film, for labels beside the outermost landmarks
constexpr double legend_mm = 20, legend_with_ruler_mm = 32;
constexpr double narrowest_mm = 130;  // or the legend has no room
// Drawings of another height are brought to the usual one: a wrong scale must not give a page like a stamp or a field.
constexpr double least_height_mm = 100, most_height_mm = 420, usual_height_mm = 240;
constexpr double sheet_edge_mm = 4;  // what printers leave white

void widen(Box& box, Position p) {
    box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y)};
}

// In pixels of the film.
Box extent(const Tracing& tracing, const std::optional<FilmSize>& film) {
    if (film) return {0, 0, static_cast<double>(film->width), static_cast<double>(film->height)};
    Box box = extent_of_shapes(tracing);
    for (const TracingLine& line : tracing.lines) {
        widen(box, line.from);
        widen(box, line.to);
    }
    for (const TracingValue& value : tracing.values) {
        const double height = value.size_pt * mm_a_point / tracing.mm_per_pixel;
        widen(box, value.corner);
        widen(box, {value.corner.x + display_width(value.text) * height / 2, value.corner.y + height});
    }
    if (box.left > box.right) return {0, 0, 1, 1};
    const double margin = margin_mm / tracing.mm_per_pixel;
    return {box.left - margin, box.top - margin, box.right + margin, box.bottom + margin};
}

Page laid_out(const Box& extent, const Tracing& tracing, double enlargement, double below_mm) {
    Page page{};
    page.enlargement = enlargement;
    page.scale = tracing.mm_per_pixel * enlargement;
    const double width = (extent.right - extent.left) * page.scale, height = (extent.bottom - extent.top) * page.scale;
    // Whole tenths: surfaces count in whole steps.
    page.width_mm = std::ceil(std::max(width, narrowest_mm) * 10) / 10;
    const double remarks = static_cast<double>(legend_remarks(tracing, page.width_mm).size());
    page.height_mm = std::ceil((height + below_mm + remarks * legend_line_height_mm) * 10) / 10;
    const double left = (page.width_mm - width) / 2;
    page.origin = {left - extent.left * page.scale, -extent.top * page.scale};
    page.drawing = {left, 0, left + width, height};
    page.legend = {0, height, page.width_mm, page.height_mm};
    return page;
}

}  // namespace

Box extent_of_shapes(const Tracing& tracing) {
    constexpr double far = std::numeric_limits<double>::infinity();
    Box box{far, far, -far, -far};
    for (const FittedCurve& curve : tracing.outlines)
        for (const Position& p : curve.outline.points) widen(box, p);
    for (const Landmark& landmark : tracing.landmarks) widen(box, landmark.position);
    return box;
}

std::vector<std::string> legend_remarks(const Tracing& tracing, double page_width_mm) {
    constexpr double column_mm = 0.55 * legend_line_mm;
    const int columns = static_cast<int>((page_width_mm - 2 * legend_edge_mm) / column_mm);
    std::vector<std::string> lines;
    for (const std::string& remark : tracing.remarks) {
        std::istringstream text(wrapped(remark, columns, ""));
        for (std::string line; std::getline(text, line);) lines.push_back(line);
    }
    return lines;
}

Page page_for(const Tracing& tracing, const std::optional<FilmSize>& film) {
    const Box box = extent(tracing, film);
    const double height = (box.bottom - box.top) * tracing.mm_per_pixel;
    const double width = (box.right - box.left) * tracing.mm_per_pixel;
    const bool usual = height >= least_height_mm && std::max(height, width) <= most_height_mm;
    return laid_out(box, tracing, usual ? 1 : usual_height_mm / std::max(height, width), legend_mm);
}

std::optional<Page> sheet_for(const Tracing& tracing, const std::optional<FilmSize>& film) {
    struct Sheet {
        double width, height;
    };
    constexpr Sheet sheets[] = {{210, 297}, {297, 210}, {297, 420}, {420, 297}};  // A4 and A3
    Page page = laid_out(extent(tracing, film), tracing, 1, legend_with_ruler_mm);
    for (const Sheet& sheet : sheets) {
        const double x = (sheet.width - page.width_mm) / 2, y = (sheet.height - page.height_mm) / 2;
        if (std::min(x, y) < sheet_edge_mm) continue;
        page.width_mm = sheet.width;
        page.height_mm = sheet.height;
        page.origin = {page.origin.x + x, page.origin.y + y};
        for (Box* box : {&page.drawing, &page.legend}) {
            *box = {box->left + x, box->top + y, box->right + x, box->bottom + y};
        }
        return page;
    }
    return {};
}

Page page_within(const Box& room, double legend_height_mm, const Tracing& tracing,
                 const std::optional<FilmSize>& film) {
    const Box box = extent(tracing, film);
    const double scale = tracing.mm_per_pixel;
    const double height = room.height() - legend_height_mm;
    const double fit = std::min(room.width() / (box.width() * scale), height / (box.height() * scale));
    double enlargement = fit;
    if (fit >= 1) {
        constexpr double still_small = 2.5;
        enlargement = fit >= still_small ? std::floor(fit) : 1;
    } else if (fit >= 0.05) {
        enlargement = std::floor(fit * 20) / 20;
    }
    Page page{};
    page.width_mm = room.width();
    page.height_mm = room.height();
    page.enlargement = enlargement;
    page.scale = scale * enlargement;
    const double left = room.left + (room.width() - box.width() * page.scale) / 2;
    page.origin = {left - box.left * page.scale, room.top - box.top * page.scale};
    page.drawing = {left, room.top, left + box.width() * page.scale, room.top + box.height() * page.scale};
    page.legend = {room.left, page.drawing.bottom, room.right, page.drawing.bottom + legend_height_mm};
    return page;
}

}  // namespace cephtool
