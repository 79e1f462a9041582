#include "analysis/arithmetic.h"

#include <algorithm>
#include <cmath>

#include "geometry/angle.h"
#include "geometry/translation.h"
#include "platform/numbers.h"

namespace tool {

Vec2 constructed(Construction construction, const std::array<Vec2, 4>& p, double number, double scale, double pixel) {
    switch (construction) {
        case Construction::middle: return midpoint(p[0], p[1]);
        case Construction::foot: return foot_of_perpendicular(p[0], {p[1], p[2]});
        case Construction::crossing: return intersection_or_empty({p[0], p[1]}, {p[2], p[3]});
        case Construction::bisector: {
            // Kept: the arms are cut at 100 pixels, whatever the scale, and the number counts pixels.
            const Vec2 arm = translated_along(p[0], p[1], p[0], 100.0 * pixel, 0.0, 1.0);
            const Vec2 other_arm = translated_along(p[0], p[2], p[0], 100.0 * pixel, 0.0, 1.0);
            return translated_along(p[0], midpoint(arm, other_arm), p[0], number * pixel, 0.0, 1.0);
        }
        case Construction::extension: return translated_along(p[0], p[1], p[1], number, 0.0, scale);
        default: return {};
    }
}

Vec2 effective_a(Vec2 n, Vec2 a, Vec2 u1c, double incisor_lean, double scale) {
    return translated_along(n, a, u1c, (incisor_lean - 12.0) * -1.0 * 0.4, -90.0, scale);
}

double incisor_lean(Vec2 n, Vec2 a, const Line& incisor) {
    return signed_angle({n, a}, incisor);
}

bool parallel(const std::array<Vec2, 4>& p) {
    constexpr double parallel_sine = 1e-12;
    const Vec2 ab = p[1] - p[0], cd = p[3] - p[2];
    return !(std::abs(cross(ab, cd)) > parallel_sine * (length(ab) * length(cd)));
}

double measured(Measure measure, const std::array<Vec2, 4>& p, double scale) {
    const auto length = [&] { return distance(p[0], p[1]) * scale; };
    switch (measure) {
        case Measure::length: return length();
        case Measure::length_right: return p[0].x > p[1].x ? -length() : length();
        case Measure::length_down: return p[0].y > p[1].y ? -length() : length();
        case Measure::angle1:
        case Measure::angle3: {
            const double angle = angle_at(p[0], p[1], p[2], formula_degrees);
            return angle == -1.0 ? 0.0 : angle;
        }
        case Measure::angle2:
        case Measure::angle4: return signed_angle({p[0], p[1]}, {p[2], p[3]}, formula_degrees);
        default: return 0.0;
    }
}

double combined(Operation operation, double left, double right) {
    switch (operation) {
        case Operation::times: return left * right;
        case Operation::over: return left / right;
        case Operation::plus: return left + right;
        case Operation::minus: return left - right;
        case Operation::less: return left < right;
        case Operation::at_most: return left <= right;
        case Operation::more: return left > right;
        case Operation::at_least: return left >= right;
        case Operation::equal: break;
    }
    return left == right;
}

double first_not_zero(std::span<const double> numbers) {
    const auto found = std::ranges::find_if(numbers, [](double number) { return truncated(number) != 0; });
    return static_cast<double>(found - numbers.begin());
}

}  // namespace tool
