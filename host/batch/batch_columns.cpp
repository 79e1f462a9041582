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

// Among its items; -1 without an item of the name.
int place_of(const std::string& name, const Analysis& analysis) {
    const auto items = analysis.items();
    const auto item = std::ranges::find_if(items, [&](const tool::Item& each) { return each.name == name; });
    return item == items.end() || item->heading ? -1 : static_cast<int>(item - items.begin());
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

BatchColumns batch_columns(std::span<const AnalysisFamily> analyses, BatchParts parts) {
    BatchColumns columns{.analyses = {}, .sets = {}, .names = {}, .parts = parts};
    std::set<std::string> taken;
    for (std::size_t i = 0; i < analyses.size(); ++i) {
        const AnalysisFamily& family = analyses[i];
        const Analysis& analysis = *family.base;
        BatchAnalysis& made = columns.analyses.emplace_back();
        made.name = name_of(analysis);
        made.for_kind[static_cast<std::size_t>(case_kind(analysis))] = &analysis;
        // A file of the person's own comes once for each kind, one behind the other.
        while (!analysis.place() && i + 1 < analyses.size() && analyses[i + 1].base->file() == analysis.file() &&
               !analyses[i + 1].base->place() && case_kind(*analyses[i + 1].base) > case_kind(*analyses[i].base)) {
            ++i;
            made.for_kind[static_cast<std::size_t>(case_kind(*analyses[i].base))] = analyses[i].base;
        }
        made.tells_population =
            (parts.norms || parts.deviations) && (analysis.population() || !family.variants.empty());
        if (made.tells_population) columns.names.push_back(unique(made.name + ":population", taken));
        for (int item = 0; item < analysis.sheet().GetCount(); ++item) {
            const SheetItem definition = analysis.sheet().GetItem(item);
            if (definition.heading) continue;
            made.items.push_back({item, !definition.expression.IsEmpty()});
            const std::string name = unique(made.name + ":" + printable(Utf8FromCodePage932(definition.name)), taken);
            columns.names.push_back(name);
            if (parts.norms) columns.names.insert(columns.names.end(), {name + ":mean", name + ":sd"});
            if (parts.deviations) columns.names.push_back(name + ":deviation");
            if (parts.errors)
                columns.names.insert(columns.names.end(), {name + ":error", name + ":mostly", name + ":assumed"});
            if (parts.errors && parts.deviations) columns.names.push_back(name + ":deviation_error");
        }
        for (const Analysis* variant : family.variants) {
            auto& added = made.variants.emplace_back(BatchAnalysis::Variant{variant, 0, {}});
            for (const BatchAnalysis::Item& item : made.items)
                added.items.push_back(place_of(analysis.items()[static_cast<std::size_t>(item.index)].name, *variant));
        }
    }
    for (const Kind kind : all_kinds) {
        std::vector<const AnalysisSheet*> sheets;
        for (const BatchAnalysis& made : columns.analyses) sheets.push_back(made.sheet(kind));
        for (BatchAnalysis& made : columns.analyses)
            for (BatchAnalysis::Variant& variant : made.variants) {
                if (case_kind(*variant.analysis) != kind) continue;
                variant.sheet = static_cast<int>(sheets.size());
                sheets.push_back(&variant.analysis->sheet());
            }
        columns.sets.emplace_back(sheets);
    }
    return columns;
}

}  // namespace cephtool
