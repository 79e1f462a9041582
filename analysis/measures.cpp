#include "analysis/measures.h"

#include <cmath>

#include "analysis/cast_measures.h"
#include "analysis/landmark_names.h"
#include "framework/application.h"
#include "geometry/angle.h"
#include "platform/number_text.h"
#include "platform/numbers.h"

namespace tool {
namespace {

// Kept: formulas multiply by 180 before they divide by pi, the exported angles the other way round; the last bits
// differ, and stored measurements have these.
double formula_degrees(double radians) {
    return radians * 180.0 / short_pi;
}

Measured cast_function(std::string_view text, PointReader& points) {
    const Landmarks& landmarks = points.landmarks();
    // Only "([TOKEN])", without blanks inside, is a cast measure.
    const std::size_t open = std::min(text.find_first_not_of(" \t"), text.size()), close = text.find("])");
    const bool bracketed = text.substr(open, 2) == "([" && close != std::string_view::npos;
    const std::string_view token = bracketed ? text.substr(open + 1, close - open) : std::string_view();
    if (!is_cast_token(token)) return {0.0, points.arguments(text, 0).end};
    if (!is_cast(landmarks.kind()) || !landmarks.cast()) return {0.0, close + 2};
    const int decimals = landmarks.cast_decimals() ? *landmarks.cast_decimals() : cast_decimals();
    return {rounded_cast_measure(cast_measure(token, *landmarks.cast()), decimals), close + 2};
}

int points_needed(Measure function) {
    switch (function) {
        case Measure::length:
        case Measure::length_right:
        case Measure::length_down: return 2;
        case Measure::angle1:
        case Measure::angle3: return 3;
        case Measure::angle2:
        case Measure::angle4: return 4;
        default: return 0;
    }
}

double value_of(Measure function, const std::array<Vec2, 4>& p, double scale) {
    const auto length = [&] { return distance(p[0], p[1]) * scale; };
    switch (function) {
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

// Angles need sides. A length of two landmarks that should be different is none when they lie at one place; that of
// a constructed point may well be 0.
void check_apart(Measure function, const PointReader::Arguments& arguments, PointReader& points) {
    const auto apart = [&](std::size_t i, std::size_t j) {
        points.expect_apart(arguments.points[i], arguments.points[j], arguments.texts[i], arguments.texts[j]);
    };
    switch (function) {
        case Measure::length:
        case Measure::length_right:
        case Measure::length_down:
            if (arguments.texts[0].starts_with('[') && arguments.texts[1].starts_with('[')) apart(0, 1);
            return;
        case Measure::angle1:
        case Measure::angle3: apart(0, 1); return apart(2, 1);
        default: apart(0, 1); return apart(2, 3);
    }
}

}  // namespace

Measured measured(Measure function, std::string_view text, PointReader& points) {
    if (function == Measure::model) return cast_function(text, points);
    const PointReader::Arguments arguments = points.arguments(text, points_needed(function));
    if (!arguments.complete) return {0.0, arguments.end};
    if (points_needed(function) > 0) check_apart(function, arguments, points);
    return {value_of(function, arguments.points, points.landmarks().scale()), arguments.end};
}

int cast_decimals() {
    return static_cast<int>(AfxGetApp()->GetProfileInt("ENV", "MODEL_DECIMALS", 2));
}

double rounded_cast_measure(double value, int decimals) {
    if (decimals == 9) {
        const double whole = std::floor(value), fraction = value - whole;
        value = fraction < 0.25 ? whole : fraction < 0.75 ? whole + 0.5 : whole + 1.0;
        decimals = 1;
    } else if (decimals != 0 && decimals != 1) {
        decimals = 2;
    }
    return read_double(print_fixed(value, decimals));
}

}  // namespace tool
