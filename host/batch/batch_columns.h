// What a batch measures, as the columns of its table.
#pragma once

#include <SheetMeasurer.h>

#include <span>
#include <string>
#include <vector>

#include "results/analysis_folder.h"

namespace cephtool {

// What is written of each item beside its value.
struct BatchParts {
    bool norms = false;       // mean and SD
    bool deviations = false;  // from the mean, in SD
    bool errors = false;      // of the value, and with deviations of those, and whose landmark it mostly is
};

// A definition file. One that the folder lists is for one kind of case, one of the person's own for all of them.
struct BatchAnalysis {
    std::string name;  // that its columns begin with
    const Analysis* for_kind[std::size(all_kinds)] = {};
    struct Item {
        int index;  // in the sheet
        bool has_formula;
    };
    std::vector<Item> items;  // those with a column: all but headings

    // A sheet with norms of another population, for cases of which the first one is.
    struct Variant {
        const Analysis* analysis;
        int sheet;               // in the set of its kind
        std::vector<int> items;  // the index there of each of the items above; -1: the sheet lacks it
    };
    std::vector<Variant> variants = {};
    bool tells_population = false;  // of its norms, in a column in front of those of its items

    const AnalysisSheet* sheet(Kind kind) const;
};

struct BatchColumns {
    std::vector<BatchAnalysis> analyses;
    std::vector<SheetSet> sets;  // of each kind of case the sheets for it, in the order of the analyses; then variants
    std::vector<std::string> names;  // "Steiner:SNA" and, as `parts` has it, "…:mean", "…:sd", "…:deviation", "…:error"
    BatchParts parts;
};

// An analysis goes by its file's name without extension, those of other kinds than lateral behind the name of their
// kind ("frontal:Ricketts:…"). A name that would be there twice gets a number: "… (2)".
BatchColumns batch_columns(std::span<const AnalysisFamily> analyses, BatchParts parts);

}  // namespace cephtool
