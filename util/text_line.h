// Line reading with the rule of CTools::GetLineText. The engine's own files are read with another rule, which also
// knows bare line feeds.
#pragma once

#include <string_view>

namespace tool {

struct TextLine {
    std::string_view text;
    int consumed;  // where the next line starts; may lie behind the end of the text
};

// The line at the start of `buffer`, which ends at a NUL or, when there is none, at byte `max`; nothing at or behind
// `max` is read. A negative `max` counts as 0.
TextLine first_line(const char* buffer, int max);

}  // namespace tool
