// Films that were read more than once.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "study/reliability.h"
#include "web/engine/json.h"

namespace engine {

// These throw a Fault for cases of unlike kinds or without a scale.
Json comparison_of_readings(const cephtool::Case& first, const cephtool::Case& second,
                            const std::vector<const cephtool::Analysis*>& analyses);
// `format` is "csv", or "json" for what the page shows. At least three films, all with as many readings.
Json study_of(const std::vector<cephtool::StudyFilm>& films, const std::vector<const cephtool::Analysis*>& analyses,
              const std::string& format);

}  // namespace engine
