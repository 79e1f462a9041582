// Films that were taken, scanned or digitised the other way round.
#pragma once

#include "cases/case.h"

namespace cephtool {

enum class Axis { x, y };

// The middle of the least and the greatest coordinate of all points, times two: about it, they keep the range that they
// have.
double mirror_extent(const Case& record, Axis axis);

// The case with x (or y) turned into extent - x: landmarks, vertebrae, own landmarks and outlines. The picture is not
// changed. An extent that would put a point on (0, 0), the empty point, is taken a pixel larger.
Case mirrored(Case record, Axis axis, double extent);

// What read_cases does with a lateral or frontal case: remarks that signs are reversed or, as the options say, turns x
// or y round unless signs are seen to hold. The picture of a case turned about its own extent no longer fits and is
// left out.
Case turned_right(Case record, const CaseOptions& options);

}  // namespace cephtool
