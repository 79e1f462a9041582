// Item results and norms as the exported calls hand them out.
#pragma once

#include <string>

#include "analysis/evaluation.h"

namespace tool {

// The norm as it stands, or without the zeros that end its decimals.
std::string norm_text(Norm norm, bool keep_decimals);

// The asked number, and the two outputs (either may be null) that go with it: for a deviation the value, or no_norm
// without a numeric mean, and the SD; for mean and SD the same number again; for a value nothing.
double item_outputs(const ItemResult& result, Ask ask, double* value_out, double* sd_out);

}  // namespace tool
