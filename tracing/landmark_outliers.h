// Landmarks that lie improbably far from where the others expect them: slips that values alone do not show.
//
// The average face is laid on the case by the similarity that fits best, far ones counting less. What is left is taken
// as a Gaussian field: faces differ by shifts that neighbours share, and each landmark by a spread of its own. Each
// landmark is then foretold from the others (kriging, by the inverse of the covariance: Rasmussen & Williams, Gaussian
// Processes for Machine Learning, 2006, ch. 5.4.2). The spreads are made up so that 266 readings of 133 real films
// give one false alarm (no frontal films were to be had: there they are taken over untried); on those films 45 of 100
// landmarks that are moved by 15 mm are named, 83 by 20 mm, all by 30 mm.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
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

// For one thread. What rests on the landmarks' names alone is kept from case to case, for each set of names.
class LandmarkOutliers {
 public:
    // The average face of cases of this kind; in others nothing is found.
    explicit LandmarkOutliers(const OutlineTemplate& face, Kind kind = Kind::lateral);
    ~LandmarkOutliers();

    // Of the kind's table, the farthest first; nothing while fewer than eight landmarks are known to the face, or the
    // case has no scale. Mirrored films are looked at as they should lie.
    std::vector<LandmarkOutlier> operator()(const Case& record);
    // The same as remarks on the case.
    void remark(Case& record);

 private:
    struct Spread;
    using Names = std::vector<std::size_t>;  // by their places in the face
    const Spread& spread_of(const Names& names);

    Kind kind_;
    std::vector<Landmark> face_;  // mm
    std::unordered_map<std::string, std::size_t> places_;
    std::map<Names, std::unique_ptr<Spread>> spreads_;
};

}  // namespace cephtool
