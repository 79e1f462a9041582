#pragma once

namespace cephtool {

// Sides of an upright rectangle; y runs down.
struct Box {
    double left, top, right, bottom;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
};

}  // namespace cephtool
