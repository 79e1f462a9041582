// The part of the sample film, and its size in pixels, that the recorded tracing shows.
#pragma once

#include "face.h"

constexpr int face_width = 220, face_height = 250;
inline const example::View face_view{0.16, CPoint(92, 84)};
