#include "analysis/measures.h"

#include <cmath>

#include "analysis/cast_measures.h"
#include "analysis/functions.h"
#include "analysis/landmark_names.h"
#include "analysis/program_writer.h"
#include "framework/application.h"
#include "platform/number_text.h"

namespace tool {
namespace {

// Angles need sides. A length of two landmarks that should be different is none when they lie at one place; that of
// a constructed point may well be 0.
template <class Arithmetic>
void check_apart(Measure function, const typename PointReader<Arithmetic>::Arguments& arguments,
                 PointReader<Arithmetic>& points) {
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

template <class Arithmetic>
Measured<typename Arithmetic::Number> read_measure(Measure function, std::string_view text,
                                                   PointReader<Arithmetic>& points) {
    if (function == Measure::model) {
        // Only "([TOKEN])", without blanks inside, is a cast measure.
        const std::size_t open = std::min(text.find_first_not_of(" \t"), text.size()), close = text.find("])");
        const bool bracketed = text.substr(open, 2) == "([" && close != std::string_view::npos;
        const std::string_view token = bracketed ? text.substr(open + 1, close - open) : std::string_view();
        if (is_cast_token(token)) return {points.arithmetic().cast_measure(token), close + 2};
    }
    const auto arguments = points.arguments(text, points_needed(function));
    const bool known = arguments.complete && points_needed(function) > 0;
    if (!known) return {{}, arguments.end};
    check_apart(function, arguments, points);
    return {points.arithmetic().measured(function, arguments.points), arguments.end};
}

template Measured<double> read_measure(Measure, std::string_view, PointReader<Landmarks>&);
template Measured<StepNumber> read_measure(Measure, std::string_view, PointReader<ProgramWriter>&);

double measured_cast(std::string_view token, const Landmarks& landmarks) {
    if (!is_cast(landmarks.kind()) || !landmarks.cast()) return 0.0;
    const int decimals = landmarks.cast_decimals() ? *landmarks.cast_decimals() : cast_decimals();
    return rounded_cast_measure(cast_measure(token, *landmarks.cast()), decimals);
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
