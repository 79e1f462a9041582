#include "analysis/check/checked_file.h"

#include "analysis/formula_names.h"
#include "analysis/growth_stage.h"
#include "platform/text.h"

namespace tool {
namespace {

// The texts in quotes that a finding chooses from.
std::vector<std::string_view> texts_of(std::string_view item) {
    std::vector<std::string_view> texts;
    std::size_t at = item.find(';');
    while (at != std::string_view::npos && (at = item.find('"', at)) != std::string_view::npos) {
        const std::size_t end = item.find('"', at + 1);
        if (end == std::string_view::npos) break;
        texts.push_back(item.substr(at + 1, end - at - 1));
        at = end + 1;
    }
    return texts;
}

}  // namespace

bool is_blank(std::string_view text) {
    return trimmed(text).empty();
}

bool has_norm(const std::optional<NamedLine>& line) {
    return line && !is_blank(line->rest);
}

CheckedFile::CheckedFile(const DefinitionFile& its_definition, int kind, Findings& its_findings)
    : definition(its_definition), findings(its_findings), formulas_(kind, its_findings) {
    for (const NamedLine& item : definition.items()) {
        names.push_back(item.name);
        if (!item.rest.data()) headings.push_back(item.name);
        for (const std::string_view shown : texts_of(item.rest)) displayed.push_back(shown);
        has_norms |= has(&Lines::mean, item.name);
    }
    displayed.insert(displayed.end(), names.begin(), names.end());
    displayed.push_back(definition.title());
    displayed.push_back("Comment");
    for (const bool second : {false, true})
        for (const int sex : {male, female})
            for_each_stage(definition.text(), sex, second,
                           [&](const StageLine& stage) { displayed.push_back(stage.name); });
}

bool CheckedFile::has(std::optional<NamedLine> Lines::*part, std::string_view item) const {
    return has_norm(norms(item, male).*part) || has_norm(norms(item, female).*part);
}

std::optional<KeyValue> CheckedFile::named(std::string_view line, const char* form) {
    const KeyValue parts = split_at_equals(line);
    if (!parts.value.data()) {
        findings.fault(line, std::string("a line without \"=\" ") + "is not read; write " + form);
        return std::nullopt;
    }
    if (is_blank(parts.key)) findings.fault(line, std::string("a name is missing in front of \"=\"; write ") + form);
    if (static_cast<std::size_t>(parts.value.data() - line.data()) > longest_key + 1)
        findings.fault(line.substr(longest_key),
                       "names are cut to " + counted(longest_key, "byte") + "; write a shorter one");
    return parts;
}

void CheckedFile::check_formula(std::string_view formula, const char* line) {
    formulas_.check(formula);
    const std::vector<Reference> found = references_in(formula);
    for (const Reference& reference : found) check_reference(reference);
    if (found.empty()) return;
    auto& known = references_[line];
    known.insert(known.end(), found.begin(), found.end());
}

void CheckedFile::check_reference(const Reference& reference) {
    const std::string_view name = reference.name;
    if (!definition.find_item(name)) {
        return findings.fault(
            name, "there is no item " + quoted(name) + ", so it counts as 0" + suggestion(meant_name(name, names)));
    }
    const bool deviation = reference.ask == Ask::deviation;
    if ((deviation || reference.ask == Ask::mean) && !has(&Lines::mean, name))
        findings.fault(name, quoted(name) + " has no mean, so 0 is taken; add one in Mean:");
    if ((deviation || reference.ask == Ask::sd) && !has(&Lines::sd, name))
        findings.fault(name, quoted(name) + " has no SD, so 0 is taken; add one in SD:");
}

}  // namespace tool
