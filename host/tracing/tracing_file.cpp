#include "host/tracing/tracing_file.h"

#include <surface/svg_surface.h>
#ifdef TOOL_SURFACE_PICTURES
#include <surface/pdf_surface.h>
#include <surface/picture_surface.h>
#endif

#include <cmath>

#include "host/text_width.h"
#include "host/tracing/tracing_drawing.h"

namespace cephtool {
namespace {

constexpr double mm_an_inch = 25.4;

void draw(const Tracing& tracing, const TracingPaper& paper, const TracingCanvas& canvas,
          std::vector<std::string>& notes) {
    std::vector<std::string> unlabelled;
    draw_tracing(tracing, paper.page, paper.style, paper.with_ruler, canvas, unlabelled);
    std::string names;
    for (const std::string& name : unlabelled) names += (names.empty() ? "" : " ") + name;
    if (!names.empty()) notes.push_back("no room for the names of " + names);
}

#ifdef TOOL_SURFACE_PICTURES
Error no_memory() {
    return {ExitCode::bad_input, "the tracing needs more memory than there is",
            "Ask for a smaller one: --size 800x1000"};
}
#endif

// The whole page in the style's colour.
void fill_page(CDC& dc, const TracingPaper& paper) {
    CBrush brush(paper.style.paper);
    const int width = static_cast<int>(std::ceil(paper.page.width_mm * 100));
    const int height = static_cast<int>(std::ceil(paper.page.height_mm * 100));
    const RECT page{0, 0, width, -height};
    dc.FillRect(&page, &brush);
}

std::string svg_file(const Tracing& tracing, const TracingPaper& paper, std::vector<std::string>& notes) {
    constexpr double pixels_a_mm = 10;
    tool::SvgSurface surface(static_cast<int>(std::ceil(paper.page.width_mm * pixels_a_mm)),
                             static_cast<int>(std::ceil(paper.page.height_mm * pixels_a_mm)), pixels_a_mm * mm_an_inch);
    surface.set_map_mode(MM_HIMETRIC);
    surface.set_background_color(paper.style.paper);
    surface.begin_layer("paper");
    fill_page(surface, paper);
#ifdef TOOL_SURFACE_PICTURES
    // The drawing itself only estimates how wide texts are.
    const auto measure = tool::PictureSurface::create(1, 1, tool::PictureSurface::Look::smooth, RGB(255, 255, 255),
                                                      pixels_a_mm * mm_an_inch);
    if (!measure) throw no_memory();
    measure->set_map_mode(MM_HIMETRIC);
    TracingCanvas canvas{surface, *measure, {}, {}};
#else
    TracingCanvas canvas{surface, surface, {}, {}};
#endif
    canvas.begin_layer = [&](const char* name) {
        surface.end_layer();
        surface.begin_layer(name);
    };
    if (paper.film) {
        canvas.draw_film = [&](const RECT& where) { surface.draw_background(paper.film->bytes, where); };
    }
    draw(tracing, paper, canvas, notes);
    return surface.svg();
}

#ifdef TOOL_SURFACE_PICTURES

// Draws on a surface without layers.
template <class Surface>
void draw_flat(Surface& surface, const Tracing& tracing, const TracingPaper& paper, std::vector<std::string>& notes) {
    surface.set_map_mode(MM_HIMETRIC);
    surface.set_background_color(paper.style.paper);
    TracingCanvas canvas{surface, surface, [](const char*) {}, {}};
    if (paper.film) {
        canvas.draw_film = [&](const RECT& where) { surface.draw_background(paper.film->picture, where); };
    }
    draw(tracing, paper, canvas, notes);
}

std::string png_file(const Tracing& tracing, const TracingPaper& paper, std::vector<std::string>& notes) {
    const auto pixels = [&](double mm) { return std::max(static_cast<int>(std::lround(mm * paper.pixels_a_mm)), 1); };
    const auto surface = tool::PictureSurface::create(pixels(paper.page.width_mm), pixels(paper.page.height_mm),
                                                      tool::PictureSurface::Look::smooth, paper.style.paper,
                                                      paper.pixels_a_mm * mm_an_inch);
    if (!surface) throw no_memory();
    draw_flat(*surface, tracing, paper, notes);
    std::string bytes = surface->png();
    if (bytes.empty()) throw no_memory();
    return bytes;
}

std::string pdf_file(const Tracing& tracing, const TracingPaper& paper, std::vector<std::string>& notes) {
    const auto surface = tool::PdfSurface::create(paper.page.width_mm, paper.page.height_mm);
    if (!surface) throw no_memory();
    surface->set_map_mode(MM_HIMETRIC);
    if (paper.style.dark) fill_page(*surface, paper);
    draw_flat(*surface, tracing, paper, notes);
    std::string bytes = surface->pdf();
    if (bytes.empty()) throw no_memory();
    return bytes;
}

#endif

}  // namespace

std::optional<TracingFormat> tracing_format(std::string_view path) {
    const std::string name = lower_case(path);
    if (name.ends_with(".png")) return TracingFormat::png;
    if (name.ends_with(".svg")) return TracingFormat::svg;
    if (name.ends_with(".pdf")) return TracingFormat::pdf;
    return {};
}

std::string tracing_file(TracingFormat format, const Tracing& tracing, const TracingPaper& paper,
                         std::vector<std::string>& notes) {
    if (format == TracingFormat::svg) return svg_file(tracing, paper, notes);
#ifdef TOOL_SURFACE_PICTURES
    return format == TracingFormat::png ? png_file(tracing, paper, notes) : pdf_file(tracing, paper, notes);
#else
    throw Error(ExitCode::bad_command_line, "this program was built without Cairo and Pango, and writes SVG only",
                "Name a file that ends in .svg.");
#endif
}

}  // namespace cephtool
