// Where labels stand so that none covers another or a landmark. The same input always gives the same places.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "cases/case.h"
#include "tracing/box.h"

namespace cephtool {

bool overlap(const Box& a, const Box& b);

struct Label {
    Position landmark;
    double width, height;
};

struct PlacedLabel {
    Box box;
    std::optional<Position> leader;  // where a line from the landmark meets the box, when the label stands off
};

struct LabelSurroundings {
    Box page;                    // labels stay inside
    double clearance;            // kept between a label and landmarks, other labels and obstacles
    std::vector<Box> obstacles;  // what must not be covered
    std::vector<Position> ink;   // points of lines that had better not be covered
};

// One for each label, nothing for those that find no free place within ten times their height.
std::vector<std::optional<PlacedLabel>> placed_labels(std::span<const Label> labels,
                                                      const LabelSurroundings& surroundings);

}  // namespace cephtool
