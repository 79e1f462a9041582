// Films that were taken, scanned or digitised the other way round: the face looks left.
#pragma once

#include "host/case/case.h"

namespace cephtool {

enum class Facing { right, left, unknown };

// Of a lateral case, judged by pairs of a front and a rear landmark. Unknown when fewer than three pairs are placed, or
// more than one in four contradicts the rest.
Facing facing(const Case& record);

// The middle of the least and the greatest x, times two: about it, all points keep the range that they have.
double mirror_extent(const Case& record);

// The case with x turned into extent - x: landmarks, vertebrae, own landmarks and outlines. The picture is not changed.
// An extent that would put a point on (0, 0), the empty point, is taken a pixel larger.
Case mirrored(Case record, double extent);

// What read_case does with a lateral case: notes that it faces left or, with `mirror`, mirrors it unless it is seen to
// face right. The picture of a mirrored case no longer fits and is left out.
Case turned_right(Case record, bool mirror);

}  // namespace cephtool
