// Sizes and colours of a report, chosen so that greys and lines stay apart on a black and white printer.
#pragma once

#include <cstddef>

#include "tracing/canvas.h"

namespace cephtool {

// Height of a line of text whose letters have this size.
constexpr double line_height(double points) {
    constexpr double arial_cell = 1.117;
    return points * mm_a_point * arial_cell;
}

inline constexpr double name_mm = line_height(16), title_mm = line_height(11), body_mm = line_height(8.5),
                        note_mm = line_height(8);

inline constexpr COLORREF ink = RGB(25, 28, 33), quiet_ink = RGB(95, 100, 108), rule_ink = RGB(176, 181, 188),
                          remark_ink = RGB(150, 60, 0);

// Of the first, second and third film: the colours that comparisons are traditionally drawn in.
inline constexpr COLORREF time_inks[] = {RGB(0, 0, 0), RGB(30, 95, 215), RGB(214, 40, 40)};
inline constexpr std::size_t most_times = std::size(time_inks);

}  // namespace cephtool
