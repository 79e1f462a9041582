// Where a window stood when its program ended, and where it may stand now.
#pragma once

#include <string>

#include "framework/plane.h"

class CWnd;

namespace tool {

// The position (left, top) and size moved into the screen: its left and top edge come first, then a window that passes
// the screen's width or height moves back, at most to 0. Widths and heights are at least 1.
// Kept: it is the screen's width that right edges are held against, not its right edge, so on screens that begin left
// of or above 0 a window may move further than it must.
RECT clamped_to_screen(const RECT& screen, int left, int top, int width, int height);

// Both use section "ENV" of the application's own profile; the keys begin with `prefix`.
void restore_placement(CWnd& window, const std::string& prefix);
void store_placement(const CWnd& window, const std::string& prefix);

}  // namespace tool
