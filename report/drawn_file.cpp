#include "report/drawn_file.h"

#include <surface/svg_surface.h>
#include <surface/svg_text.h>
#ifdef TOOL_SURFACE_PICTURES
#include <surface/font_failure.h>
#include <surface/pdf_surface.h>
#include <surface/picture_surface.h>
#endif

#include <algorithm>
#include <cmath>

#include "base/error.h"
#include "base/system.h"
#include "base/wording.h"
#include "report/film.h"

namespace cephtool {
namespace {

constexpr double mm_an_inch = 25.4;
constexpr double svg_pixels_a_mm = 10;

#ifdef TOOL_SURFACE_PICTURES
constexpr COLORREF white = RGB(255, 255, 255);

Error no_memory() {
    return {ExitCode::bad_input, "the drawing needs more memory than there is",
            "Ask for a smaller one: --size 800x1000"};
}

Error no_font() {
    return {ExitCode::bad_input, "a font can't be opened, so that texts would look otherwise",
            "Let more files be open at once (ulimit -n 64), or install the fonts once more."};
}

// The list of fonts is read when the first text is measured. What can't be opened then is left out without a word.
void check_fonts_can_be_read() {
    constexpr int most_open = 4;
    if (!can_open_files(most_open)) throw no_font();
    tool::font_failed();  // forgets an earlier drawing's
}
#endif

// The whole page in its colour.
void fill_page(CDC& dc, const Sheet& sheet) {
    fill_box(dc, {0, 0, sheet.width_mm, sheet.height_mm}, sheet.paper);
}

std::string svg_file(const Sheet& sheet, const DrawPage& draw) {
    tool::SvgSurface surface(static_cast<int>(std::ceil(sheet.width_mm * svg_pixels_a_mm)),
                             static_cast<int>(std::ceil(sheet.height_mm * svg_pixels_a_mm)),
                             svg_pixels_a_mm * mm_an_inch);
    surface.set_map_mode(MM_HIMETRIC);
    surface.set_background_color(sheet.paper);
    surface.begin_layer("paper");
    fill_page(surface, sheet);
    const std::unique_ptr<CDC> measure = text_measure();  // the surface itself only estimates
    Canvas canvas{surface, *measure, {}, {}};
    canvas.begin_layer = [&](const char* name) {
        surface.end_layer();
        surface.begin_layer(name);
    };
    canvas.draw_picture = [&](const Film& film, const RECT& where) { surface.draw_background(film.file, where); };
    draw(canvas);
    return surface.svg();
}

#ifdef TOOL_SURFACE_PICTURES

// The canvas of a surface without layers.
template <class Surface>
Canvas flat_canvas(Surface& surface, const Sheet& sheet) {
    surface.set_map_mode(MM_HIMETRIC);
    surface.set_background_color(sheet.paper);
    return {surface, surface, [](const char*) {},
            [&surface](const Film& film, const RECT& where) { surface.draw_background(film.picture, where); }};
}

std::string png_file(const Sheet& sheet, const DrawPage& draw) {
    const auto pixels = [&](double mm) { return std::max(static_cast<int>(std::lround(mm * sheet.pixels_a_mm)), 1); };
    const auto surface =
        tool::PictureSurface::create(pixels(sheet.width_mm), pixels(sheet.height_mm),
                                     tool::PictureSurface::Look::smooth, sheet.paper, sheet.pixels_a_mm * mm_an_inch);
    if (!surface) throw no_memory();
    draw(flat_canvas(*surface, sheet));
    std::string bytes = surface->png();
    if (bytes.empty()) throw no_memory();
    return bytes;
}

std::string pdf_file(const Sheet& sheet, std::span<const DrawPage> pages) {
    const auto surface = tool::PdfSurface::create(sheet.width_mm, sheet.height_mm);
    if (!surface) throw no_memory();
    const Canvas canvas = flat_canvas(*surface, sheet);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (i > 0) surface->new_page();
        if (sheet.paper != white) fill_page(*surface, sheet);
        pages[i](canvas);
    }
    std::string bytes = surface->pdf();
    if (bytes.empty()) throw no_memory();
    return bytes;
}

#endif

}  // namespace

std::optional<FileFormat> file_format(std::string_view path) {
    const std::string name = lower_case(path);
    if (name.ends_with(".png")) return FileFormat::png;
    if (name.ends_with(".svg")) return FileFormat::svg;
    if (name.ends_with(".pdf")) return FileFormat::pdf;
    return {};
}

std::string drawn_file(FileFormat format, const Sheet& sheet, std::span<const DrawPage> pages) {
#ifdef TOOL_SURFACE_PICTURES
    check_fonts_can_be_read();
    std::string bytes = format == FileFormat::svg   ? svg_file(sheet, pages.front())
                        : format == FileFormat::png ? png_file(sheet, pages.front())
                                                    : pdf_file(sheet, pages);
    if (tool::font_failed()) throw no_font();
    return bytes;
#else
    if (format == FileFormat::svg) return svg_file(sheet, pages.front());
    throw Error(ExitCode::bad_command_line, "this program was built without Cairo and Pango, and writes SVG only",
                "Name a file that ends in .svg.");
#endif
}

std::string html_file(const Sheet& sheet, std::span<const DrawPage> pages, const std::string& title,
                      Language language) {
    std::string html = std::string("<!DOCTYPE html>\n<html lang=\"") + (language == Language::japanese ? "ja" : "en") +
                       "\">\n<meta charset=\"utf-8\">\n<title>" + tool::xml_escaped(title) +
                       "</title>\n<style>@page{size:A4;margin:0}body{margin:0;background:#888}"
                       "svg{display:block;margin:0 auto 4mm}"
                       "@media print{body{background:none}svg{margin:0;break-after:page}}</style>\n";
    for (std::size_t i = 0; i < pages.size(); ++i) {
        std::string page = drawn_file(FileFormat::svg, sheet, pages.subspan(i, 1));
        const std::string id = " id=\"",
                          numbered = id + "p" + std::to_string(i + 1) + "-";  // one of a name in a document
        for (std::size_t at = 0; (at = page.find(id, at)) != std::string::npos; at += numbered.size())
            page.replace(at, id.size(), numbered);
        html += page;
    }
    return html + "</html>\n";
}

std::unique_ptr<CDC> text_measure() {
#ifdef TOOL_SURFACE_PICTURES
    check_fonts_can_be_read();
    auto surface =
        tool::PictureSurface::create(1, 1, tool::PictureSurface::Look::smooth, white, svg_pixels_a_mm * mm_an_inch);
    if (!surface) throw no_memory();
#else
    auto surface = std::make_unique<tool::SvgSurface>(1, 1, svg_pixels_a_mm * mm_an_inch);
#endif
    surface->set_map_mode(MM_HIMETRIC);
    return surface;
}

}  // namespace cephtool
