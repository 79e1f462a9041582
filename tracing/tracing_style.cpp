#include "tracing/tracing_style.h"

namespace cephtool {
namespace {

int hex_digit(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : 0;
}

// A part of the way to white.
int brightened(int part) {
    return part + (255 - part) * 11 / 20;
}

}  // namespace

const OutlinePen& TracingStyle::pen(const OutlineStyle& outline) const {
    if (outline.dotted) return dotted;
    if (outline.tissue == Tissue::tooth) return tooth;
    if (outline.tissue == Tissue::soft) return outline.fine ? fine_soft : soft;
    return outline.fine ? fine : main;
}

COLORREF TracingStyle::mode_colour(const std::string& name) const {
    int parts[3] = {};
    for (std::size_t i = 0; i < 3 && 2 * i + 2 < name.size(); ++i) {
        parts[i] = hex_digit(name[2 * i + 1]) * 16 + hex_digit(name[2 * i + 2]);
        if (dark) parts[i] = brightened(parts[i]);
    }
    return RGB(parts[0], parts[1], parts[2]);
}

const TracingStyle& paper_style() {
    static constexpr TracingStyle style{
        .paper = RGB(255, 255, 255),
        .text = RGB(25, 28, 33),
        .quiet_text = RGB(105, 110, 118),
        .main = {RGB(38, 42, 50), 4},
        .fine = {RGB(140, 146, 155), 2},
        .soft = {RGB(168, 118, 88), 4},
        .fine_soft = {RGB(205, 172, 150), 2},
        .tooth = {RGB(70, 66, 58), 3},
        .dotted = {RGB(206, 84, 16), 3},
        .tooth_fill = RGB(253, 246, 226),
        .dot = RGB(198, 24, 38),
        .halo = RGB(255, 255, 255),
        .label = RGB(25, 28, 33),
        .leader = RGB(150, 154, 160),
        .dark = false,
    };
    return style;
}

const TracingStyle& film_style() {
    static constexpr TracingStyle style{
        .paper = RGB(16, 18, 22),
        .text = RGB(236, 238, 240),
        .quiet_text = RGB(158, 164, 172),
        .main = {RGB(255, 214, 92), 4},
        .fine = {RGB(196, 168, 92), 2},
        .soft = {RGB(122, 206, 236), 4},
        .fine_soft = {RGB(96, 150, 170), 2},
        .tooth = {RGB(250, 248, 240), 3},
        .dotted = {RGB(255, 150, 92), 3},
        .tooth_fill = RGB(46, 48, 52),
        .dot = RGB(255, 92, 92),
        .halo = RGB(16, 18, 22),
        .label = RGB(245, 246, 248),
        .leader = RGB(150, 156, 164),
        .dark = true,
    };
    return style;
}

}  // namespace cephtool
