// The texts of a tracing, which is made with English ones, in Japanese.
#pragma once

#include "tracing/tracing.h"

namespace cephtool {

// Remarks, facts, mode, origin and values of a tracing of this case.
void put_legend_into_japanese(Tracing& tracing, const Case& record);

}  // namespace cephtool
