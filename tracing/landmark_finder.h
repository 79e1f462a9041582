#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cases/case_record.h"

namespace cephtool {

// Where the landmarks of a case stand, those of the person's own and virtual ones included. The case must have a scale
// and outlive the finder.
class LandmarkFinder {
 public:
    explicit LandmarkFinder(const Case& record) : case_(record), record_(record) {}

    // Nothing when the name is unknown or its landmark, or one that it is made of, not placed.
    std::optional<Position> operator()(const std::string& name);
    // All that are placed, in the case's order, virtual ones last.
    std::vector<Landmark> all();

 private:
    bool lacks_something(const VirtualLandmark& made);

    const Case& case_;
    CaseRecord record_;
};

}  // namespace cephtool
