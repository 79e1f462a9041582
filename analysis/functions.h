// What formulas and point expressions call: every function's name, arguments and unit stand here and nowhere else.
#pragma once

#include <algorithm>
#include <optional>
#include <string_view>
#include <type_traits>

#include "analysis/arithmetic.h"

namespace tool {

// What a reference asks of another item.
enum class Ask { value = 0, deviation = 1, mean = 2, sd = 3 };

enum class Unit { number, ratio, millimetres, degrees, percent, deviations, of_item, unknown };

enum class Takes { points, cast_token, item, values };

struct ValueFunction {
    std::string_view name;
    Takes takes;
    int points = 0;  // how many
    Unit unit = Unit::unknown;
    Measure measure{};            // of functions of points or of a cast's token
    std::optional<Ask> ask = {};  // of functions of an item
};

// Kept: in the order in which a formula's functions are replaced; "lenR" and "lenD" begin with "len".
inline constexpr ValueFunction value_functions[] = {
    {"Model", Takes::cast_token, 0, Unit::millimetres, Measure::model},  // unless the token says otherwise
    {"lenR", Takes::points, 2, Unit::millimetres, Measure::length_right},
    {"lenD", Takes::points, 2, Unit::millimetres, Measure::length_down},
    {"len", Takes::points, 2, Unit::millimetres, Measure::length},
    {"angle1", Takes::points, 3, Unit::degrees, Measure::angle1},
    {"angle3", Takes::points, 3, Unit::degrees, Measure::angle3},
    {"angle2", Takes::points, 4, Unit::degrees, Measure::angle2},
    {"angle4", Takes::points, 4, Unit::degrees, Measure::angle4},
    {"case", Takes::item, 0, Unit::of_item, {}, Ask::value},
    {"sdu", Takes::item, 0, Unit::deviations, {}, Ask::deviation},
    {"mean", Takes::item, 0, Unit::of_item, {}, Ask::mean},
    {"sdv", Takes::item, 0, Unit::of_item, {}, Ask::sd},
    {"switch", Takes::values, 0, Unit::number},  // last of all, when its arguments are values
};

struct PointFunction {
    std::string_view name;
    Construction construction;
    int points;           // how many
    bool number = false;  // behind the points: pixels of the bisector, mm of the extension
};

// In the order in which they are tried.
inline constexpr PointFunction point_functions[] = {
    {"mid", Construction::middle, 2},
    {"vertical", Construction::foot, 3},
    {"cross", Construction::crossing, 4},
    {"AngleBisector", Construction::bisector, 3, true},
    {"extension", Construction::extension, 2, true},
    {"EffectiveA", Construction::effective_a, 0},
};

// The value or point function of that name; null when there is none.
template <class Functions>
auto function_named(const Functions& functions, std::string_view name) {
    const auto* const found = std::ranges::find(functions, name, &std::remove_cvref_t<decltype(*functions)>::name);
    return found == std::end(functions) ? nullptr : found;
}

// Of a measure's code; 0 for one that measures no points.
constexpr int points_needed(Measure measure) {
    const auto* const found = std::ranges::find(value_functions, measure, &ValueFunction::measure);
    return found == std::end(value_functions) ? 0 : found->points;
}

}  // namespace tool
