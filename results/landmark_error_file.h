// The errors of landmarks that values are measured with (LandmarkErrors.h), from where people keep them.
#pragma once

#include <LandmarkErrors.h>

#include "base/source.h"
#include "results/analysis_folder.h"

namespace cephtool {

// Those of a file (docs/errors.md). Throws an Error when a line can't be read, or there are none.
tool::LandmarkErrors landmark_errors_in(const Source& source);

// Those of the folder's LandmarkError.txt. Throws an Error when there are none.
tool::LandmarkErrors landmark_errors_of(const AnalysisFolder& folder);

}  // namespace cephtool
