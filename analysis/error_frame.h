// The axes that the errors of landmarks are told along.
#pragma once

#include "LandmarkErrors.h"
#include "analysis/landmarks.h"

namespace tool {

// Along Frankfort towards the face, and across it, upwards on a face that looks right; of unit length.
struct ErrorFrame {
    ErrorAxes axes = ErrorAxes::film;
    Vec2 along{1, 0}, across{0, -1};
};

ErrorFrame error_frame(const Landmarks& landmarks);

}  // namespace tool
