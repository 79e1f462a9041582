// The auxiliary points of a lateral record.
#pragma once

#include "Records.h"

namespace tool {

// Places each auxiliary point (slots 54 to 58) that is empty at its offset from its landmark. With a scale of 0, or one
// that leads out of 32 bits, a point stays as it is.
void complete_lateral_record(tagPOINTLAT& record);

}  // namespace tool
