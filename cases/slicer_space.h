// Where the points of 3D Slicer lie on a film. Slicer keeps millimetres in a patient's axes, named after the sides that
// x, y and z point to: LPS (left, posterior, superior) or RAS (right, anterior, superior), LPS with x and y negated.
// A flat picture lies in the plane z = 0, its columns along L and its rows along P, whatever it shows.
#pragma once

#include <optional>
#include <string_view>

#include "cases/case.h"

namespace cephtool {

enum class SlicerSpace { lps, ras, ijk };  // ijk: pixels of the image

// From a name, or the number that old files have: 0 RAS, 1 LPS, 2 IJK.
std::optional<SlicerSpace> slicer_space(std::string_view name);

// How the positions of a file become pixels: each divided by `divisor`. A pixel is then `mm_per_pixel` wide.
struct SlicerScale {
    double divisor = 1;
    double mm_per_pixel = 1;
};

// `own` is the scale that this program wrote into the file: the positions are millimetres. Else `given`, of the command
// line, is how wide a unit of the file is: the picture had no true size in Slicer. With neither they are millimetres,
// kept in pixels of 0.1 mm, so that the engine's 1/64 pixel cuts off nothing that can be seen.
SlicerScale slicer_scale(std::optional<double> own, std::optional<double> given, SlicerSpace space);

Position film_position(double x, double y, SlicerSpace space, const SlicerScale& scale);
// In LPS and millimetres. Throws an Error for a scale so extreme that the way back would not meet the same pixel.
Position lps_position(Position pixel, double mm_per_pixel);

// That a file without a scale of its own was taken so.
Remark positions_in_mm();

}  // namespace cephtool
