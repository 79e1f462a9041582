// One half of a frontal tracing laid over the other, turned over at the midline, so that the sides can be compared.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tracing/outline_fit.h"

namespace cephtool {

enum class Half { none, right, left };  // of the patient; the right one lies on the left of the film

struct Midline {
    std::string name;  // "CG-ANS"
    Position from, to;
};

// Crista galli to anterior nasal spine (Grummons and Kappeyne van de Coppello, J Clin Orthod 1987;21:448-465); where
// one of them is missing, the line that halves ZR-ZL square to it; nothing where that can't be drawn either.
std::optional<Midline> midline_of(const std::vector<Landmark>& landmarks);

// What the curves have on the given half, mirrored and dotted. A curve that crosses the midline is cut there;
// one of more than 8000 points is left out.
std::vector<FittedCurve> mirrored_half(const std::vector<FittedCurve>& curves, const Midline& midline, Half half);

}  // namespace cephtool
