#include "cases/slicer_space.h"

#include "base/numbers.h"
#include "base/wording.h"
#include "cases/case_format.h"

namespace cephtool {

std::optional<SlicerSpace> slicer_space(std::string_view name) {
    const std::string lower = lower_case(trimmed(name));
    if (lower == "lps" || lower == "1") return SlicerSpace::lps;
    if (lower == "ras" || lower == "0") return SlicerSpace::ras;
    if (lower == "ijk" || lower == "2") return SlicerSpace::ijk;
    return {};
}

SlicerScale slicer_scale(std::optional<double> own, std::optional<double> given, SlicerSpace space) {
    constexpr double fine = 0.1;
    if (space == SlicerSpace::ijk) return {1, own ? *own : given.value_or(1)};
    if (own) return {*own, *own};
    if (given) return {1, *given};
    return {fine, fine};
}

Position film_position(double x, double y, SlicerSpace space, const SlicerScale& scale) {
    const double sign = space == SlicerSpace::ras ? -1 : 1;
    return {on_grid(sign * x / scale.divisor), on_grid(sign * y / scale.divisor)};
}

Position lps_position(Position pixel, double mm_per_pixel) {
    constexpr double least = 1e-6, most = 1e6;
    if (!(mm_per_pixel >= least && mm_per_pixel <= most)) {
        throw Error(ExitCode::bad_input, "a pixel of " + shortest(mm_per_pixel) + " mm can't be kept in millimetres",
                    "Check the scale of the case.");
    }
    return {on_grid(pixel.x) * mm_per_pixel, on_grid(pixel.y) * mm_per_pixel};
}

Remark positions_in_mm() {
    return {"scale_assumed", "Positions are taken as millimetres."};
}

}  // namespace cephtool
