#include "surface/pen_stroke.h"

#include <algorithm>
#include <span>

namespace tool {

namespace {

using Lengths = std::span<const double>;

// Of pens one pixel wide, in steps along the longer axis.
Lengths thin_dashes(int style) {
    static constexpr double dash[] = {18, 6}, dot[] = {3, 3}, dash_dot[] = {9, 6, 3, 6},
                            dash_dot_dot[] = {9, 3, 3, 3, 3, 3};
    switch (style) {
        case PS_DASH: return dash;
        case PS_DOT: return dot;
        case PS_DASHDOT: return dash_dot;
        case PS_DASHDOTDOT: return dash_dot_dot;
        default: return {};
    }
}

// Of geometric pens, in widths of the pen, ends included.
Lengths wide_dashes(int style) {
    static constexpr double dash[] = {3, 1}, dot[] = {1, 1}, dash_dot[] = {3, 1, 1, 1},
                            dash_dot_dot[] = {3, 1, 1, 1, 1, 1};
    switch (style) {
        case PS_DASH: return dash;
        case PS_DOT: return dot;
        case PS_DASHDOT: return dash_dot;
        case PS_DASHDOTDOT: return dash_dot_dot;
        default: return {};
    }
}

PenStroke::Ends geometric_ends(int style) {
    switch (style & PS_ENDCAP_MASK) {
        case PS_ENDCAP_SQUARE: return PenStroke::Ends::square;
        case PS_ENDCAP_FLAT: return PenStroke::Ends::flat;
        default: return PenStroke::Ends::round;
    }
}

std::vector<double> times(Lengths lengths, double unit) {
    std::vector<double> result(lengths.begin(), lengths.end());
    for (double& length : result) length *= unit;
    return result;
}

}  // namespace

std::vector<double> PenStroke::bare_dashes() const {
    std::vector<double> bare = dashes;
    if (ends == Ends::flat) return bare;
    for (std::size_t i = 0; i < bare.size(); ++i) bare[i] = i % 2 ? bare[i] + width : std::max(bare[i] - width, 0.0);
    return bare;
}

std::optional<PenStroke> stroke_of(const CPen& pen, double pixels, double dash_pixels, std::optional<COLORREF> gap) {
    const int style = pen.GetStyle() & PS_STYLE_MASK;
    if (!pen.Exists() || style == PS_NULL) return std::nullopt;
    PenStroke stroke{pen.GetColor(), std::max(pen.GetWidth() * pixels, 1.0), PenStroke::Ends::round, {}, {}};
    if ((pen.GetStyle() & PS_TYPE_MASK) == PS_GEOMETRIC) {
        stroke.dashes = times(wide_dashes(style), stroke.width);
        stroke.ends = geometric_ends(pen.GetStyle());
    } else if (pen.GetWidth() <= 1) {
        stroke.dashes = times(thin_dashes(style), dash_pixels);
        if (!stroke.dashes.empty()) stroke.ends = PenStroke::Ends::flat, stroke.gap = gap;
    }
    // Kept: a cosmetic pen wider than 1 is solid whatever its style, as the platform draws it.
    return stroke;
}

}  // namespace tool
