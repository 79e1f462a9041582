#include "analysis/formula_names.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/text.h"

namespace tool {
namespace {

constexpr std::string_view effective_a_prefix = "EffectiveA(";

std::size_t find_closing(std::string_view text, std::size_t from) {
    while (from < text.size() && text[from] != ']') from += char_length(text.substr(from));
    return std::min(from, text.size());
}

}  // namespace

std::size_t cast_measure_at(std::string_view formula) {
    constexpr std::string_view function = "Model";
    if (!formula.starts_with(function)) return 0;
    const std::size_t open = std::min(formula.find_first_not_of(" \t", function.size()), formula.size());
    return formula.substr(open).starts_with("([") ? open + 1 : 0;
}

void visit_names(std::string_view formula, FormulaNames& names) {
    for (std::size_t at = 0; at < formula.size();) {
        const std::string_view rest = formula.substr(at);
        if (const std::size_t token = cast_measure_at(rest)) {
            const std::size_t close = find_closing(formula, at + token + 1);
            names.cast_measure(formula.substr(at + token, close - at - token + 1));
            at = close + 1;
        } else if (rest.starts_with(effective_a_prefix)) {
            for (const std::string_view name : {"N", "A", "U1R", "U1", "U1C"}) names.landmark(name);
            at += effective_a_prefix.size();
        } else if (rest[0] == '[') {
            const std::size_t close = find_closing(formula, at);
            names.landmark(formula.substr(at + 1, close - at - 1));
            at = close + 1;
        } else if (rest[0] == '"') {
            at = std::min(formula.find('"', at + 1), formula.size() - 1) + 1;
        } else if (const auto found = std::ranges::find_if(
                       value_functions, [rest](const auto& f) { return f.ask && rest.starts_with(f.name); });
                   found != std::end(value_functions)) {
            at += found->name.size();
            if (const auto name = quoted_name(formula.substr(at))) {
                names.reference(*found->ask, name->name);
                at += name->end;
            }
        } else {
            at += char_length(rest);
        }
    }
}

std::vector<Reference> references_in(std::string_view formula) {
    struct : FormulaNames {
        void reference(Ask ask, std::string_view item) override { found.push_back({ask, item}); }
        std::vector<Reference> found;
    } names;
    visit_names(formula, names);
    return std::move(names.found);
}

}  // namespace tool
