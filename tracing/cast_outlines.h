// The picture of a cast: crowns as they usually look from the chewing surface, brought onto the contact points, and the
// arch that the teeth would stand on if both sides were alike.
//
// 1. A crown's shape is that of its class, of usual proportions (Wheeler's dental anatomy); its contact points are
//    those of the case. Landmarks of the user's own bend it: "41f", "41l" (the facial and the lingual end of the crown) and
//    "16c" (the tip of a canine's or of a first molar's front outer cusp) set its depth.
// 2. The arch is y = a + b x^2 + c x^4, fitted to the middles of the teeth by least squares (the even terms of the
//    polynomial that AlHarbi and others fitted, Angle Orthod 2008;78:281-287, so that it is symmetrical). x runs along
//    the line through the hindmost pair of teeth of both sides, from its middle.
#pragma once

#include <string>
#include <vector>

#include "tracing/outline_fit.h"

namespace cephtool {

struct ToothWidth {
    std::string tooth;  // FDI number
    double width;       // in pixels
    Position beside;    // where it is to be written: the middle of the text, outside of the crown
};

struct CastPicture {
    std::vector<FittedCurve> curves;  // arches first, then crowns, then edges and fissures
    std::vector<ToothWidth> widths;
};

// Of teeth with both contact points, at two places; an arch needs three teeth of each side and a pair behind the
// canines.
CastPicture cast_picture(const std::vector<Landmark>& landmarks, const std::vector<Landmark>& user,
                         double mm_per_pixel);

}  // namespace cephtool
