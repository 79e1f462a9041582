// Landmarks that lie improbably far from where the others expect them: slips that values alone do not show.
//
// The average face is laid on the case by the similarity that fits best, far ones counting less. What is left is taken
// as a Gaussian field: faces differ by shifts that neighbours share, and each landmark by a spread of its own. Each
// landmark is then foretold from the others (kriging, by the inverse of the covariance: Rasmussen & Williams, Gaussian
// Processes for Machine Learning, 2006, ch. 5.4.2). The spreads are made up so that 266 readings of 133 real films
// give one false alarm; on those films 45 of 100 landmarks that are moved by 15 mm are named, 83 by 20 mm, all by 30
// mm.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tracing/outline_template.h"

namespace cephtool {

struct LandmarkOutlier {
    std::string name;
    double mm = 0;           // from where the others expect it
    std::size_t others = 0;  // how many expect it
};

// In words: "Go lies 9 mm from where the other 18 landmarks expect it."
Remark remark_of(const LandmarkOutlier& outlier);

// For one thread. What rests on the landmarks' names alone is kept from case to case.
class LandmarkOutliers {
 public:
    // Lateral faces only; with any other nothing is found.
    explicit LandmarkOutliers(OutlineTemplate face);
    ~LandmarkOutliers();

    // Of the kind's table, the farthest first; nothing while fewer than eight landmarks are known to the face, or the
    // case has no scale. Mirrored films are looked at as they should lie.
    std::vector<LandmarkOutlier> operator()(const Case& record);
    // The same as remarks on the case.
    void remark(Case& record);

 private:
    struct Spread;
    const Spread& spread_of(const std::vector<std::string>& names);

    OutlineTemplate face_;
    std::unique_ptr<Spread> spread_;
};

}  // namespace cephtool
