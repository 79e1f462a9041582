// Owners of Cairo's and Pango's objects.
#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <memory>

namespace tool {

template <auto release>
struct Releaser {
    template <class Object>
    void operator()(Object* object) const {
        release(object);
    }
};

using CairoContext = std::unique_ptr<cairo_t, Releaser<&cairo_destroy>>;
using CairoSurface = std::unique_ptr<cairo_surface_t, Releaser<&cairo_surface_destroy>>;
using CairoFontOptions = std::unique_ptr<cairo_font_options_t, Releaser<&cairo_font_options_destroy>>;
using PangoContextOwner = std::unique_ptr<PangoContext, Releaser<&g_object_unref>>;
using PangoLayoutOwner = std::unique_ptr<PangoLayout, Releaser<&g_object_unref>>;
using PangoFontOwner = std::unique_ptr<PangoFontDescription, Releaser<&pango_font_description_free>>;
using PangoMetricsOwner = std::unique_ptr<PangoFontMetrics, Releaser<&pango_font_metrics_unref>>;

// Keeps a context's state (source, transformation, clip) for a scope.
class SavedState {
 public:
    explicit SavedState(cairo_t* context) : context_(context) { cairo_save(context); }
    ~SavedState() { cairo_restore(context_); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

 private:
    cairo_t* context_;
};

// Takes written bytes into a std::string.
cairo_status_t append_bytes(void* string, const unsigned char* bytes, unsigned int count);

}  // namespace tool
