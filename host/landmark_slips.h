// Landmarks that lie improbably far from where the others expect them, remarked on before a case is measured.
#pragma once

#include <map>
#include <optional>

#include "host/command.h"
#include "tracing/landmark_outliers.h"

namespace cephtool {

// By the shipped average face, which is read at the first case of its kind; casts have none. Where it can't be read the
// user is told so, and cases are measured all the same.
class LandmarkSlips {
 public:
    explicit LandmarkSlips(Streams& streams) : streams_(streams) {}

    void remark(Case& record);

 private:
    Streams& streams_;
    std::map<Kind, std::optional<LandmarkOutliers>> outliers_;
};

}  // namespace cephtool
