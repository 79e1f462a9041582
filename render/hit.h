// What lies near a place of the window.
#pragma once

#include <optional>
#include <span>

#include "CalcTool.h"
#include "render/mapping.h"

namespace tool {

// The placed point, and the outline as draw_outline draws it, that is seen nearest to `at`, at most `radius` device
// pixels away; of equally near ones the first. Nothing when there is none.
std::optional<int> nearest_point(std::span<const POINT> points, CPoint at, int radius, const View& view);
std::optional<int> nearest_outline(std::span<const tagTRACELINE> outlines, CPoint at, int radius, const View& view);

}  // namespace tool
