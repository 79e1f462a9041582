// Angles in degrees. All are made with the short pi: a right angle is 90.00000001175155 in angle_at.
#pragma once

#include "geometry/line.h"
#include "geometry/vec2.h"
#include "platform/numbers.h"

namespace tool {

// v turned clockwise, as seen on the screen.
Vec2 turned(Vec2 v, double radians);

// How radians become degrees. The order of its steps shows in the last bits.
using ToDegrees = double(double radians);

// The unsigned angle abc at the vertex b, 0 to 180; -1.0 when either side has no length.
double angle_at(Vec2 a, Vec2 b, Vec2 c, ToDegrees to_degrees = degrees_from_radians);

// The angle from u to v, -180 to 180; from (1, 0) to (0, 1), clockwise on the screen, it is -90.
// Parallel vectors give 0.0; so do antiparallel ones unless they are exact negatives, which give 180.0.
// A vector without length gives 0.0.
double signed_angle(Vec2 u, Vec2 v, ToDegrees to_degrees = degrees_from_radians);

// The same from the direction of ab to that of cd.
inline double signed_angle(const Line& ab, const Line& cd, ToDegrees to_degrees = degrees_from_radians) {
    return signed_angle(ab.direction(), cd.direction(), to_degrees);
}

}  // namespace tool
