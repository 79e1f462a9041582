// Addition of this project: the texts that a result list shows of an item's numbers, for hosts that measure with a
// SheetMeasurer and show some rows only.
#pragma once

#include <string>

#include "ResultList.h"
#include "framework/export.h"

namespace tool {

// As of ResultRow; "" where there is no number.
struct NumberTexts {
    std::string value, mean, sd, deviation, stars;
};

// Whether the item has a unit settles its decimals. Without its norm only the value has a text.
TOOL_API NumberTexts number_texts(const ResultNumbers& numbers, bool has_unit, bool with_norm);

}  // namespace tool
