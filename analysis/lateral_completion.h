// The auxiliary points of a lateral record.
#pragma once

#include <optional>

#include "Records.h"

namespace tool {

// Places each auxiliary point (slots 54 to 58) that is empty at its offset from its landmark. With a scale of 0, or one
// that leads out of 32 bits, a point stays as it is.
void complete_lateral_record(tagPOINTLAT& record);

// What an auxiliary slot is to hold; nothing for other slots, without its landmark, and where the above places none.
std::optional<CPoint> auxiliary_point(const tagPOINTLAT& record, int slot);

}  // namespace tool
