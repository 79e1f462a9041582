// Fonts that could not be opened.
#pragma once

namespace tool {

// Whether since the last call a text of this thread was drawn or measured whose font could not be opened: it looks
// otherwise than asked for.
bool font_failed();

}  // namespace tool
