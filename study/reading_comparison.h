// Two readings of one film beside each other.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "results/measurement.h"

namespace cephtool {

// The second reading less the first, in mm along and across Frankfort of the first (FilmAxes.h).
struct LandmarkDifference {
    std::string name;
    double along = 0, across = 0, distance = 0;
};

// Of a value that both readings have.
struct ValueDifference {
    std::size_t analysis = 0, item = 0;  // their places
    std::string first, second, text;     // the values and what the second is less the first, as they are shown
    double difference = 0;
    double dahlberg = 0;  // of this pair alone: |difference| / sqrt(2)
};

struct ReadingComparison {
    std::vector<LandmarkDifference> landmarks;  // that both readings have
    // Dahlberg's error of all these landmarks together (Dahlberg, Statistical Methods, 1940), mm; nothing without any.
    std::optional<double> dahlberg_along, dahlberg_across;
    std::vector<ValueDifference> values;
};

// Both are of one kind, on the same picture, and the first has a scale; so has the second, or lengths count for
// nothing. Analyses of other kinds give nothing.
ReadingComparison compared(const Case& first, const Case& second, std::span<const Analysis* const> analyses);

}  // namespace cephtool
