// What an AnalysisSheet holds. Shared with the sets that it is in.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "AnalysisSheet.h"
#include "analysis/definition_file.h"
#include "analysis/program.h"
#include "analysis/sample.h"

namespace tool {

struct SheetBody {
    SheetBody(int its_kind, std::string text, int its_cast_decimals);

    const NamedLine* line(int index) const {
        return index >= 0 && index < static_cast<int>(lines.size()) ? &lines[static_cast<std::size_t>(index)] : nullptr;
    }
    // Made at the first call.
    const Program& program() const;
    const std::vector<SheetItem>& items() const;

    int kind;
    DefinitionFile file;
    std::vector<NamedLine> lines;  // of the items
    Sample sample;
    int cast_decimals;

 private:
    mutable std::once_flag program_made_, items_made_;
    mutable Program program_;
    mutable std::vector<SheetItem> items_;
};

}  // namespace tool
