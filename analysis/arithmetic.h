// What formulas are made of: constructions of points, measures of points, operations on numbers. The readers of
// formulas (formula.h, point_expression.h) call them through an arithmetic, a class with these members:
//
//   Point, Number                 a Point() is (0, 0), a Number() 0
//   kind(), find(name), position(found), virtuals(), virtual_construction(index)    landmarks, as of Landmarks
//   at_one_place, parallel        whether that makes a line or a crossing undefined
//   constructed, effective_a, measured, cast_measure, combined, first_not_zero, number    as the functions below
//
// There are two. Landmarks computes at once, for one record. ProgramWriter writes down what there is to compute, for
// any record. What a reader does next depends on the formula's text and on the landmarks that there are, never on what
// a number comes to: so one reading serves both, and a program gives the bits that the text gives.
#pragma once

#include <array>
#include <cmath>
#include <span>

#include "geometry/line.h"
#include "geometry/vec2.h"
#include "platform/numbers.h"

namespace tool {

enum class Construction : unsigned char { middle, foot, crossing, bisector, extension, effective_a };

// All but effective_a. `number` is the bisector's pixels or the extension's mm. Coordinates are in steps: `scale` is mm
// a step, `pixel` the steps of a pixel.
Vec2 constructed(Construction construction, const std::array<Vec2, 4>& points, double number, double scale,
                 double pixel);

// U1C moved at right angles to N-A by 0.4 mm for each degree that the upper incisor leans away from 12 degrees to N-A.
Vec2 effective_a(Vec2 n, Vec2 a, Vec2 u1c, double incisor_lean, double scale);
double incisor_lean(Vec2 n, Vec2 a, const Line& incisor);

// Whether two points lie at one place, as near as rounding moves a constructed point; a landmark moves by more.
inline constexpr double one_place_px = 1e-6;
inline bool at_one_place(Vec2 p, Vec2 q) {
    const Vec2 way = q - p;
    return !(std::abs(way.x) > one_place_px || std::abs(way.y) > one_place_px);
}
// Whether the line of the first two points and that of the others have no crossing that means anything.
bool parallel(const std::array<Vec2, 4>& points);

// The codes that travel through the exported interface. angle3 and angle4 measure what angle1 and angle2 measure; 106
// and 107 are accepted and measure nothing.
enum class Measure : unsigned {
    length = 101,
    length_right = 102,  // negative when the first point lies to the right of the second
    length_down = 103,   // negative when the first point lies below the second
    angle1 = 104,
    angle2 = 105,
    model = 108,
    angle3 = 109,
    angle4 = 110
};

// Kept: formulas multiply by 180 before they divide by pi, the exported angles the other way round; the last bits
// differ, and stored measurements have these.
inline double formula_degrees(double radians) {
    return radians * 180.0 / short_pi;
}

// Lengths are mm by the scale, angles degrees; 0 for an angle between sides without length.
double measured(Measure measure, const std::array<Vec2, 4>& points, double scale);

enum class Operation : unsigned char { times, over, plus, minus, less, at_most, more, at_least, equal };

// Comparisons give 1 or 0.
double combined(Operation operation, double left, double right);

// The position, from 0, of the first number that is not 0 when cut toward zero; their count when there is none.
double first_not_zero(std::span<const double> numbers);

}  // namespace tool
