#include "host/batch/batch_columns.h"

#include <CodePage.h>

#include <algorithm>
#include <set>

#include "base/wording.h"

namespace cephtool {
namespace {

std::string name_of(const Analysis& analysis) {
    const std::string stem = short_name(analysis);
    const std::string kind = kind_name(analysis);
    return !analysis.place() || analysis.kind() == tool::Kind::lateral ? stem : kind + ":" + stem;
}

std::string unique(const std::string& name, std::set<std::string>& taken) {
    std::string candidate = name;
    for (int i = 2; !taken.insert(candidate).second; ++i) candidate = name + " (" + std::to_string(i) + ")";
    return candidate;
}

}  // namespace

const AnalysisSheet* BatchAnalysis::sheet(Kind kind) const {
    const Analysis* analysis = for_kind[static_cast<std::size_t>(kind)];
    return analysis ? &analysis->sheet() : nullptr;
}

BatchColumns batch_columns(std::span<const Analysis* const> analyses, BatchParts parts) {
    BatchColumns columns{.analyses = {}, .sets = {}, .names = {}, .parts = parts};
    std::set<std::string> taken;
    for (std::size_t i = 0; i < analyses.size(); ++i) {
        const Analysis& analysis = *analyses[i];
        BatchAnalysis& made = columns.analyses.emplace_back();
        made.name = name_of(analysis);
        made.for_kind[static_cast<std::size_t>(case_kind(analysis))] = &analysis;
        // A file of the person's own comes once for each kind, one behind the other.
        while (!analysis.place() && i + 1 < analyses.size() && analyses[i + 1]->file() == analysis.file() &&
               !analyses[i + 1]->place() && case_kind(*analyses[i + 1]) > case_kind(*analyses[i])) {
            ++i;
            made.for_kind[static_cast<std::size_t>(case_kind(*analyses[i]))] = analyses[i];
        }
        for (int item = 0; item < analysis.sheet().GetCount(); ++item) {
            const SheetItem definition = analysis.sheet().GetItem(item);
            if (definition.heading) continue;
            made.items.push_back({item, !definition.expression.IsEmpty()});
            const std::string name = unique(made.name + ":" + printable(Utf8FromCodePage932(definition.name)), taken);
            columns.names.push_back(name);
            if (parts.norms) columns.names.insert(columns.names.end(), {name + ":mean", name + ":sd"});
            if (parts.deviations) columns.names.push_back(name + ":deviation");
            if (parts.errors) columns.names.insert(columns.names.end(), {name + ":error", name + ":mostly"});
            if (parts.errors && parts.deviations) columns.names.push_back(name + ":deviation_error");
        }
    }
    for (const Kind kind : all_kinds) {
        std::vector<const AnalysisSheet*> sheets;
        for (const BatchAnalysis& made : columns.analyses) sheets.push_back(made.sheet(kind));
        columns.sets.emplace_back(sheets);
    }
    return columns;
}

}  // namespace cephtool
