#include "surface/text_run.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <utility>

#include "platform/numbers.h"
#include "surface/cairo_figure.h"
#include "surface/drawn_surface.h"
#include "surface/font_failure.h"

namespace tool {

namespace {

PangoContextOwner new_context(bool jagged) {
    PangoContextOwner context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    const CairoFontOptions options(cairo_font_options_create());
    // Advances are those of the font at any size, so that a text is as wide on paper as on the screen.
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    if (jagged) cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_NONE);
    pango_cairo_context_set_font_options(context.get(), options.get());
    return context;
}

PangoFontOwner description_of(const Typeface& face, double em_px) {
    // Beyond this Pango's own numbers overflow.
    constexpr double largest_em = 100'000;
    PangoFontOwner font(pango_font_description_new());
    pango_font_description_set_family(font.get(), face.families.c_str());
    pango_font_description_set_weight(font.get(), static_cast<PangoWeight>(std::clamp(face.weight, 100, 1000)));
    if (face.italic) pango_font_description_set_style(font.get(), PANGO_STYLE_ITALIC);
    pango_font_description_set_absolute_size(font.get(), std::min(em_px, largest_em) * PANGO_SCALE);
    return font;
}

// As the font itself has it.
CellShape shape_of(PangoContext* context, const Typeface& face) {
    constexpr double em_px = 1000;
    const PangoFontOwner font = description_of(face, em_px);
    const PangoMetricsOwner metrics(pango_context_get_metrics(context, font.get(), nullptr));
    return {pango_units_to_double(pango_font_metrics_get_ascent(metrics.get())) / em_px,
            pango_units_to_double(pango_font_metrics_get_descent(metrics.get())) / em_px};
}

void add_lines(PangoLayout* layout, const Typeface& face) {
    PangoAttrList* const attributes = pango_attr_list_new();
    if (face.underline) pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
    if (face.strike_out) pango_attr_list_insert(attributes, pango_attr_strikethrough_new(TRUE));
    pango_layout_set_attributes(layout, attributes);
    pango_attr_list_unref(attributes);
}

thread_local bool failed = false;

bool is_open(PangoFont* font) {
    cairo_scaled_font_t* const scaled = font ? pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font)) : nullptr;
    return scaled && cairo_scaled_font_status(scaled) == CAIRO_STATUS_SUCCESS;
}

bool fonts_are_open(PangoLayout* layout) {
    for (const GSList* run = pango_layout_get_line_readonly(layout, 0)->runs; run; run = run->next)
        if (!is_open(static_cast<const PangoLayoutRun*>(run->data)->item->analysis.font)) return false;
    return true;
}

}  // namespace

bool font_failed() {
    return std::exchange(failed, false);
}

TextRun::TextRun(const std::string& text, const Typeface& face, bool jagged) {
    const PangoContextOwner context = new_context(jagged || face.jagged);
    // Among the fonts that have a Chinese character this picks the Japanese form.
    if (face.japanese) pango_context_set_language(context.get(), pango_language_from_string("ja"));
    shape_ = face.shape ? *face.shape : shape_of(context.get(), face);
    em_px_ = face.em_px(shape_);
    layout_.reset(pango_layout_new(context.get()));
    const PangoFontOwner font = description_of(face, em_px_);
    pango_layout_set_font_description(layout_.get(), font.get());
    pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
    add_lines(layout_.get(), face);
    pango_layout_set_text(layout_.get(), text.data(), static_cast<int>(text.size()));
    PangoRectangle logical;
    pango_layout_get_extents(layout_.get(), nullptr, &logical);
    width_px_ = pango_units_to_double(logical.width);
    if (!fonts_are_open(layout_.get())) failed = true;
}

void TextRun::paint(cairo_t* context, const Caption& caption) const {
    const SavedState state(context);
    double left = caption.x;
    switch (caption.align & TA_CENTER) {
        case TA_CENTER: left -= width_px_ / 2; break;
        case TA_RIGHT: left -= width_px_; break;
        default: break;
    }
    const double baseline = caption.y + baseline_drop(shape_, em_px_, caption.align);
    if (caption.background) {
        set_color(context, *caption.background);
        cairo_rectangle(context, left, baseline - shape_.ascent * em_px_, width_px_, height_px());
        cairo_fill(context);
    }
    set_color(context, caption.color);
    cairo_move_to(context, left, baseline);
    pango_cairo_show_layout_line(context, pango_layout_get_line_readonly(layout_.get(), 0));
}

CSize text_extent(LPCSTR text, int count, const CFont& font, double pixels, bool jagged) {
    const TextRun run(utf8_of(text, count), typeface_of(font, pixels), jagged);
    return {rounded(run.width_px() / pixels), rounded(run.height_px() / pixels)};
}

}  // namespace tool
