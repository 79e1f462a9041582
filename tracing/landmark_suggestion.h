// Where landmarks that are not placed yet are likely: the average face, bent to those that are.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tracing/outline_template.h"

namespace cephtool {

class LandmarkSuggestion {
 public:
    static constexpr std::size_t least_placed = 3;

    // `placed` are looked at for those that the face has; it must outlive the suggestion.
    LandmarkSuggestion(const OutlineTemplate& face, const std::vector<Landmark>& placed);

    // In the pixels of the placed ones. Nothing while fewer than three are placed, when they lie in one place, and for
    // a landmark that the face lacks.
    std::optional<Position> operator()(const std::string& name) const;

 private:
    const OutlineTemplate& face_;
    std::function<Position(Position)> map_;
};

}  // namespace cephtool
