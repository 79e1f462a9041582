// Local frames: a point from its coordinates along an axis, and the coordinates of a point between two axes.
#pragma once

#include "framework/plane.h"
#include "geometry/line.h"
#include "geometry/vec2.h"

namespace tool {

// The point d1 along the axis from its a, rightward (downward when vertical) whichever way b lies, and d2 to the
// left of that direction as seen on the screen. d1 and d2 are in mm, `scale` in mm a pixel; scale 0 gives (0, 0).
Vec2 point_in_frame(const Line& axis, double scale, double d1, double d2);

struct FrameDistances {
    double to_ac, to_ab;  // each signed by where the point projects on the other axis
};

// The distances of p from the axes a-c and a-b through `origin` a, in mm. A distance is positive when the foot on the
// other axis lies inside its segment. Feet are whole pixels.
FrameDistances distances_in_frame(CPoint origin, CPoint b, CPoint c, CPoint p, double scale);

}  // namespace tool
