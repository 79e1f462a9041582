// How far readings of a landmark scatter, as ellipses at true size on the average face.
#pragma once

#include "report/pages.h"
#include "study/reliability.h"
#include "tracing/outline_template.h"

namespace cephtool {

// Holds 95 % of single readings, were they normal; mm along Frankfort and across it.
struct ScatterEllipse {
    Position major, minor;  // half axes
};
ScatterEllipse scatter_ellipse(const StudyLandmark& landmark);

// A page of its own; nothing of a face without outlines, as of casts. Landmarks that the face lacks are named below it.
void add_landmark_scatter(Pages& pages, const Study& study, const OutlineTemplate& face);

}  // namespace cephtool
