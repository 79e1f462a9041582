// Addition of this project: a definition file made of items of several analyses.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "Analysis.h"
#include "Result.h"
#include "framework/export.h"

namespace tool {

// An item by its place among the analysis' items().
struct ComposedItem {
    const Analysis* analysis = nullptr;
    std::size_t item = 0;
};

// The bytes of a definition file (code page 932, line ends CR LF) that gives each of the items the value, norms and
// deviation that its own analysis gives for a patient of known sex and, where norms change with growth, known age or
// dental stage. While the sex is unknown it may have norms that are left out there: those that are the same for both,
// where they stand in columns of different stages.
//
// Items keep their order. Those that their formulas or norms refer to come along behind them. A name that another item
// already has, with another formula or other norms, gets that of its analysis: "SNA (Steiner)". Stages of several
// analyses are cut at all their borders, so that each has its norms within its own. Signs, Japanese names and doubts
// about norms come along. Ages of samples do as far as they overlap; `title` is UTF-8.
//
// A failure says why, when there is no item, items are of unlike records (lateral, frontal, casts) or their norms go by
// the age here and the dental stage there, one refers to an item that its file lacks, a formula takes a norm that has
// columns for some of the stages only, a norm has a bracket that is not closed, or there would be more than 100 stages.
TOOL_API Result<std::string> compose(std::string_view title, std::span<const ComposedItem> items);

}  // namespace tool
