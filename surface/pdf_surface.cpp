#include "surface/pdf_surface.h"

#include <cairo-pdf.h>

#include "platform/numbers.h"
#include "surface/cairo_figure.h"
#include "surface/text_run.h"

namespace tool {

namespace {

constexpr double mm_per_inch = 25.4, points_per_inch = 72;

}  // namespace

struct PdfSurface::Document {
    std::string bytes;  // what has been written so far
    CairoSurface surface;
    CairoContext context;
};

std::unique_ptr<PdfSurface> PdfSurface::create(double width_mm, double height_mm, int dpi) {
    const auto allowed = [](double side_mm) { return side_mm >= 1 && side_mm <= 5000; };
    if (!allowed(width_mm) || !allowed(height_mm) || dpi < 72 || dpi > 4800) return nullptr;
    auto document = std::make_unique<Document>();
    document->surface.reset(cairo_pdf_surface_create_for_stream(append_bytes, &document->bytes,
                                                                width_mm * points_per_inch / mm_per_inch,
                                                                height_mm * points_per_inch / mm_per_inch));
    document->context.reset(cairo_create(document->surface.get()));
    if (cairo_status(document->context.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    cairo_scale(document->context.get(), points_per_inch / dpi, points_per_inch / dpi);
    const Device device{.width_px = rounded(width_mm * dpi / mm_per_inch),
                        .height_px = rounded(height_mm * dpi / mm_per_inch),
                        .dpi = static_cast<double>(dpi),
                        .dash_px = dpi / 96.0};
    return std::unique_ptr<PdfSurface>(new PdfSurface(device, std::move(document)));
}

PdfSurface::PdfSurface(const Device& device, std::unique_ptr<Document> document)
    : DrawnSurface(device), document_(std::move(document)) {
    m_bPrinting = TRUE;
}

PdfSurface::~PdfSurface() = default;

void PdfSurface::new_page() {
    cairo_show_page(document_->context.get());
}

void PdfSurface::draw_background(const Background& picture, const RECT& where) {
    paint_background(document_->context.get(), picture, device_box(where));
}

CSize PdfSurface::GetTextExtent(LPCSTR text, int count) const {
    return text_extent(text, count, *GetCurrentFont(), pixels_a_unit(), false);
}

std::string PdfSurface::pdf() {
    cairo_surface_finish(document_->surface.get());
    const bool whole = cairo_surface_status(document_->surface.get()) == CAIRO_STATUS_SUCCESS;
    return whole ? document_->bytes : std::string();
}

void PdfSurface::paint(const Figure& figure) {
    paint_figure(document_->context.get(), figure);
}

void PdfSurface::paint(const Caption& caption) {
    TextRun(caption.text, caption.face, false).paint(document_->context.get(), caption);
}

}  // namespace tool
