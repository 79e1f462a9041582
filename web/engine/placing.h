// Landmarks that a person places, moves and takes away.
#pragma once

#include <string>

#include "cases/case.h"

namespace engine {

// Of the kind's table, a vertebra's, or else the person's own. Throws an Error for a name that no landmark can have,
// and a place that none can have.
void place_landmark(cephtool::Case& record, const std::string& name, cephtool::Position at);
// Nothing happens when it is not placed.
void remove_landmark(cephtool::Case& record, const std::string& name);

}  // namespace engine
