#include "analysis/check/items.h"

#include <algorithm>

#include "analysis/check/norms.h"
#include "analysis/formula_names.h"
#include "analysis/item_text.h"
#include "platform/text.h"

namespace tool {
namespace {

bool in_quotes(std::string_view text, std::size_t at) {
    return std::ranges::count(text.substr(0, at), '"') % 2 == 1;
}

void check_alternatives(std::string_view list, const char* line, CheckedFile& file) {
    bool texts = false;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(';', begin), list.size());
        const std::string_view alternative = list.substr(begin, end - begin);
        const auto quotes = std::ranges::count(alternative, '"');
        begin = end + 1;
        if (is_blank(alternative))
            file.findings.fault(
                alternative,
                "an alternative is missing between the \";\"; write a formula, or a text in double quotes");
        else if (!references_in(alternative).empty())
            file.findings.fault(
                alternative,
                "a quote makes this alternative a text, so it can't refer to an item; refer to it in front of the \";\"");
        else if (quotes % 2 == 1)
            file.findings.fault(alternative,
                                "the quotes of this text are not closed before the next \";\"; a text can't hold one");
        else if (texts && quotes == 0)
            file.findings.fault(
                alternative,
                "behind a text every alternative is a text; put it in double quotes, or in front of the texts");
        else if (quotes == 0)
            file.check_formula(alternative, line);
        texts |= quotes > 0;
    }
}

void check_expression(std::string_view text, const char* line, CheckedFile& file) {
    const std::size_t colon = text.find(':');
    if (colon != std::string_view::npos) {
        const std::string_view type = trimmed(text.substr(colon + 1));
        if (type.empty() || type.size() > 4 || !std::ranges::all_of(type, is_digit)) {
            return file.findings.fault(
                text.substr(colon),
                in_quotes(text, colon)
                    ? "\":\" starts the item's type, also inside quotes; use names and texts without it"
                    : "behind \":\" stands the item's type, a number of at most four digits");
        }
    }
    const std::string_view expression = split_type(text).expression;
    const std::size_t semicolon = expression.find(';');
    if (semicolon != std::string_view::npos && in_quotes(expression, semicolon)) {
        return file.findings.fault(
            expression.substr(semicolon),
            "\";\" ends the formula, also inside quotes; rename the item and write its new name here");
    }
    if (is_blank(expression.substr(0, semicolon)))
        return file.findings.fault(text, "a formula is missing here; without one the item is 0");
    file.check_formula(expression.substr(0, semicolon), line);
    if (semicolon != std::string_view::npos) check_alternatives(expression.substr(semicolon + 1), line, file);
}

}  // namespace

void check_item(std::string_view line, int section, CheckedFile& file) {
    if (line.find_first_of("=[(") == std::string_view::npos)
        return file.findings.note(line, "a line without \"=\" is a heading in result lists, not an item");
    const auto parts = file.named(line, "name=formula");
    if (!parts) return;
    const NamedLine first = *file.definition.find_item(parts->key);
    if (first.name.data() != line.data()) {
        if (first.section == section || first.rest != parts->value)
            file.findings.fault(line, "there is an item " + quoted(parts->key) +
                                          " further up, and only that one is read; rename or remove one");
        return;
    }
    if (is_blank(parts->value))
        return file.findings.fault(line, "an item without a formula counts as missing; write one behind \"=\"");
    check_norms_of(first, file);
    check_expression(parts->value, line.data(), file);
}

}  // namespace tool
