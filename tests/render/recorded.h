// What a drawing recorded, its lines joined by "; ".
#pragma once

#include <string>

#include "surface/recording_surface.h"

inline std::string joined(const tool::RecordingSurface& surface) {
    std::string text;
    for (const char c : surface.text()) text += c == '\n' ? std::string("; ") : std::string(1, c);
    return text.substr(0, text.size() - (text.empty() ? 0 : 2));
}

template <class Draw>
std::string recorded(Draw draw) {
    tool::RecordingSurface surface;
    draw(&surface);
    return joined(surface);
}
