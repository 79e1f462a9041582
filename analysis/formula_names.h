// What a formula's text names, read without evaluating it.
#pragma once

#include <string_view>
#include <vector>

#include "analysis/formula.h"

namespace tool {

// Called for each name in the order of the text. Names inside quotes that no reference reads are passed over.
struct FormulaNames {
    virtual ~FormulaNames() = default;
    virtual void landmark(std::string_view) {}
    virtual void cast_measure(std::string_view) {}  // "[UCAW]"
    virtual void reference(Ask, std::string_view) {}
};

void visit_names(std::string_view formula, FormulaNames& names);

// What it refers to, in the order of the text; names are views into it.
std::vector<Reference> references_in(std::string_view formula);

// Where the "[" of the token stands in a text that begins with a cast measure, "Model([UCAW])": blanks may stand in
// front of its "(". 0 for other texts.
std::size_t cast_measure_at(std::string_view formula);

}  // namespace tool
