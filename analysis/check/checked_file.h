// A definition file while it is checked: what it names, and what its formulas refer to.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "analysis/check/circles.h"
#include "analysis/check/findings.h"
#include "analysis/check/formula.h"
#include "analysis/definition_file.h"
#include "util/key_value.h"

namespace tool {

class CheckedFile {
 public:
    static constexpr int male = 1, female = 2;
    using Lines = DefinitionFile::Lines;

    CheckedFile(const DefinitionFile& its_definition, int kind, Findings& its_findings);

    const DefinitionFile& definition;
    Findings& findings;
    std::vector<std::string_view> names, headings;
    std::vector<std::string_view> displayed;  // what can have a Japanese name
    bool has_norms = false;                   // of any item

    Lines norms(std::string_view item, int sex) const {
        return definition.find(item, DefinitionFile::Look::norms, sex);
    }
    // Whether the item has a mean, or an SD, for either sex.
    bool has(std::optional<NamedLine> Lines::*part, std::string_view item) const;

    // The name and what stands behind its "="; nothing when there is no "=".
    std::optional<KeyValue> named(std::string_view line, const char* form);
    // `line` is where the item or norm begins.
    void check_formula(std::string_view formula, const char* line);
    // What the formulas that were checked refer to.
    const References& references() const { return references_; }

 private:
    void check_reference(const Reference& reference);

    FormulaCheck formulas_;
    References references_;
};

bool is_blank(std::string_view text);
// Whether the line is there and has a value.
bool has_norm(const std::optional<NamedLine>& line);

}  // namespace tool
