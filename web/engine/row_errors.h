// The standard errors of rows' values, as "analyze --error" has them.
#pragma once

#include <vector>

#include "web/engine/chosen_rows.h"
#include "web/engine/json.h"

namespace engine {

// {remarks, rows}: of these rows, or of all. Without a scale there are none, since those of landmarks are in mm.
Json row_errors(cephtool::Case record, const ChosenRows& rows, const std::vector<int>& wanted,
                const cephtool::Texts& texts);

}  // namespace engine
