// What items of analyses measure, as a part of a tracing.
#pragma once

#include <span>
#include <string>

#include "results/analysis_folder.h"
#include "tracing/tracing.h"

namespace cephtool {

// Adds the lines, perpendiculars and arcs of an item, and its value; what can't be measured goes to the notes. `name`
// is the item's, or "ANALYSIS:ITEM" where analyses have items of one name that measure otherwise. Throws an Error of
// the command line when no item of the case's kind has the name, or several that differ.
void add_measure(Tracing& tracing, const Case& record, std::span<const Analysis> analyses, const std::string& name);

}  // namespace cephtool
