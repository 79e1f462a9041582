#include "host/batch/batch_columns.h"

#include <CodePage.h>

#include <algorithm>
#include <set>

#include "host/text_width.h"

namespace cephtool {
namespace {

std::string name_of(const Analysis& analysis) {
    const std::string stem = analysis.short_name();
    const std::string kind = name_of_engine_kind(analysis.engine_kind);
    return !analysis.index || analysis.engine_kind == static_cast<int>(Kind::lateral) ? stem : kind + ":" + stem;
}

std::string unique(const std::string& name, std::set<std::string>& taken) {
    std::string candidate = name;
    for (int i = 2; !taken.insert(candidate).second; ++i) candidate = name + " (" + std::to_string(i) + ")";
    return candidate;
}

std::set<std::string_view> bracketed(std::string_view text) {
    std::set<std::string_view> names;
    for (std::size_t open; (open = text.find('[')) != std::string_view::npos;) {
        text.remove_prefix(open);
        const std::size_t end = std::min(text.find(']'), text.size());
        names.insert(text.substr(0, end));
        text.remove_prefix(end);
    }
    return names;
}

// Whether its alternatives, if any, name no landmark beside those of the formula that chooses. Texts name none.
bool needs_one_set(const std::string& formula) {
    const std::size_t semicolon = std::min(formula.find(';'), formula.size());
    const std::string_view whole(formula), alternatives = whole.substr(semicolon);
    return std::ranges::includes(bracketed(whole.substr(0, semicolon)), bracketed(alternatives)) &&
           alternatives.find("EffectiveA") == std::string_view::npos;
}

}  // namespace

const AnalysisSheet* BatchAnalysis::sheet(Kind kind) const {
    const Analysis* analysis = for_kind[static_cast<std::size_t>(kind)];
    return analysis ? &analysis->sheet : nullptr;
}

BatchColumns batch_columns(std::span<const Analysis* const> analyses, BatchParts parts) {
    BatchColumns columns{.analyses = {}, .names = {}, .parts = parts};
    std::set<std::string> taken;
    for (std::size_t i = 0; i < analyses.size(); ++i) {
        const Analysis& analysis = *analyses[i];
        BatchAnalysis& made = columns.analyses.emplace_back();
        made.name = name_of(analysis);
        made.for_kind[static_cast<std::size_t>(case_kind(analysis))] = &analysis;
        // A file of the person's own comes once for each kind, one behind the other.
        while (!analysis.index && i + 1 < analyses.size() && analyses[i + 1]->file == analysis.file &&
               !analyses[i + 1]->index && case_kind(*analyses[i + 1]) > case_kind(*analyses[i])) {
            ++i;
            made.for_kind[static_cast<std::size_t>(case_kind(*analyses[i]))] = analyses[i];
        }
        for (int item = 0; item < analysis.sheet.GetCount(); ++item) {
            const SheetItem definition = analysis.sheet.GetItem(item);
            if (definition.heading) continue;
            made.items.push_back({item, !definition.expression.IsEmpty()});
            made.plain = made.plain && needs_one_set(static_cast<LPCSTR>(definition.expression));
            const std::string name = unique(made.name + ":" + printable(Utf8FromCodePage932(definition.name)), taken);
            columns.names.push_back(name);
            if (parts.norms) columns.names.insert(columns.names.end(), {name + ":mean", name + ":sd"});
            if (parts.deviations) columns.names.push_back(name + ":deviation");
        }
    }
    return columns;
}

}  // namespace cephtool
