#include "analysis/composed_items.h"

#include <algorithm>
#include <set>

#include "analysis/formula_names.h"
#include "analysis/item_text.h"
#include "analysis/landmark_names.h"
#include "platform/code_page.h"
#include "platform/text.h"
#include "util/key_value.h"

namespace tool {

std::string_view cut_to(std::string_view text, std::size_t bytes) {
    std::size_t end = 0;
    while (end < text.size()) {
        const std::size_t next = end + char_length(text.substr(end));
        if (next > std::min(bytes, text.size())) break;
        end = next;
    }
    return text.substr(0, end);
}

std::string file_name(const Analysis& analysis) {
    const std::u8string name = analysis.file().filename().u8string();
    return {name.begin(), name.end()};
}

std::string file_stem(const Analysis& analysis) {
    const std::u8string stem = analysis.file().stem().u8string();
    return {stem.begin(), stem.end()};
}

std::string cp932(std::string_view utf8) {
    return code_page_from_utf8(utf8).value_or(std::string());
}

std::vector<std::string_view> ComposedItems::Entry::texts() const {
    std::vector<std::string_view> all{item.rest};
    for (const Norms& of_sex : norms)
        for (const auto& norm : {of_sex.mean, of_sex.sd})
            if (norm) all.push_back(norm->rest);
    return all;
}

ComposedItems::ComposedItems(std::span<const ComposedItem> items) {
    for (const ComposedItem& each : items) add(each);
    for (std::size_t i = 0; i < entries_.size(); ++i) add_references(i);
    if (failure_.empty() && entries_.empty()) fail("There is no item to make an analysis of");
    if (failure_.empty()) name_entries();
}

void ComposedItems::fail(const std::string& reason) {
    if (failure_.empty()) failure_ = reason;
}

std::size_t ComposedItems::place_of(const Analysis* analysis) {
    const auto known = std::ranges::find(sources_, analysis, &Source::analysis);
    if (known != sources_.end()) return static_cast<std::size_t>(known - sources_.begin());
    const SheetBody* const sheet = body_of(analysis->sheet());
    Source& added = sources_.emplace_back(Source{analysis, sheet, {}});
    for (const bool second : {false, true})
        for (std::size_t sex = 0; sex < std::size(sexes); ++sex)
            added.tables[second][sex] = stage_table(sheet->file.text(), sexes[sex], second);
    return sources_.size() - 1;
}

void ComposedItems::add(const ComposedItem& wanted) {
    const SheetBody* const sheet = wanted.analysis ? body_of(wanted.analysis->sheet()) : nullptr;
    const NamedLine* const line = sheet ? sheet->line(static_cast<int>(wanted.item)) : nullptr;
    if (!line) return fail("There is no such item");
    if (!line->rest.data()) return;  // a heading
    if (!sources_.empty() && !same_record(sheet->kind, sources_.front().sheet->kind))
        return fail("Items of " + file_name(*sources_.front().analysis) + " and " + file_name(*wanted.analysis) +
                    " are not measured on the same kind of case");
    entries_[entry_of(place_of(wanted.analysis), line->name)].is_asked = true;
}

// The place of the item among the entries, where it is added when it is not there.
std::size_t ComposedItems::entry_of(std::size_t source, std::string_view name) {
    const auto [known, is_new] = places_.emplace(std::pair(source, name), entries_.size());
    if (!is_new) return known->second;
    const DefinitionFile& file = sources_[source].sheet->file;
    Entry& added = entries_.emplace_back(Entry{source, *file.find_item(name), {}, {}});
    for (std::size_t sex = 0; sex < std::size(sexes); ++sex) {
        const DefinitionFile::Lines lines = file.find(name, DefinitionFile::Look::norms, sexes[sex]);
        added.norms[sex] = {lines.mean, lines.sd};
    }
    return known->second;
}

void ComposedItems::add_references(std::size_t place) {
    const std::size_t source = entries_[place].source;
    for (const std::string_view text : entries_[place].texts())
        for (const auto& [ask, name] : references_in(text))
            if (const auto item = sources_[source].sheet->file.find_item(name))
                entry_of(source, item->name);
            else  // counts as 0 there, and would be found here if another analysis had one
                fail("\"" + utf8_from_code_page(entries_[place].item.name) + "\" of " +
                     file_name(*sources_[source].analysis) + " refers to \"" + utf8_from_code_page(name) +
                     "\", which is no item there");
}

// Whether both are the same item with the same norms, as far as they lead.
bool ComposedItems::same(const Entry& a, const Entry& b) const {
    using Pair = std::pair<const Entry*, const Entry*>;
    std::set<Pair> met{{&a, &b}};
    std::vector<Pair> open{{&a, &b}};
    while (!open.empty()) {
        const auto [mine, other] = open.back();
        open.pop_back();
        if (!same_lines(*mine, *other)) return false;
        for (const std::string_view text : mine->texts())
            for (const auto& [ask, name] : references_in(text)) {
                const auto here = places_.find({mine->source, name}), there = places_.find({other->source, name});
                if ((here == places_.end()) != (there == places_.end())) return false;
                if (here == places_.end()) continue;
                const Pair led{&entries_[here->second], &entries_[there->second]};
                if (met.insert(led).second) open.push_back(led);
            }
    }
    return true;
}

bool ComposedItems::same_lines(const Entry& a, const Entry& b) const {
    if (a.item.name != b.item.name || a.texts() != b.texts()) return false;
    for (const auto lines : {&Sample::signs, &Sample::japanese, &Sample::unverified})
        if (of(lines, a) != of(lines, b)) return false;
    for (std::size_t sex = 0; sex < std::size(sexes); ++sex)
        for (const auto part : {&Norms::mean, &Norms::sd})
            if (!same_columns(a, b, part, sex)) return false;
    return true;
}

bool ComposedItems::same_columns(const Entry& a, const Entry& b, std::optional<NamedLine> Norms::*part,
                                 std::size_t sex) const {
    const auto &mine = a.norms[sex].*part, &other = b.norms[sex].*part;
    if (mine.has_value() != other.has_value()) return false;
    if (!mine || !norms_differ(mine->rest)) return true;
    return std::ranges::equal(sources_[a.source].table(*mine, sex), sources_[b.source].table(*other, sex),
                              [](const StagePlace& x, const StagePlace& y) {
                                  return x.range.from == y.range.from && x.range.to == y.range.to &&
                                         x.by_age == y.by_age;
                              });
}

void ComposedItems::name_entries() {
    std::set<std::string, std::less<>> taken;
    for (Entry& entry : entries_) {
        const auto first = std::ranges::find_if(
            entries_, [&](const Entry& other) { return !other.name.empty() && same(other, entry); });
        if (first != entries_.end()) {
            first->is_asked = first->is_asked || entry.is_asked;
            entry.name = first->name;
            entry.is_repeated = true;
            continue;
        }
        const std::string stem = cp932(file_stem(*source_of(entry).analysis));
        entry.name = entry.item.name;
        for (int number = 1; !taken.insert(entry.name).second; ++number) {
            const std::string mark =
                " (" + std::string(cut_to(stem, 30)) + (number > 1 ? " " + std::to_string(number) : "") + ")";
            entry.name = std::string(cut_to(entry.item.name, longest_key - mark.size())) + mark;
        }
    }
}

std::string ComposedItems::renamed(const Entry& entry, std::string_view text) const {
    std::string whole;
    const char* from = text.data();
    for (const auto& [ask, name] : references_in(text)) {
        const auto place = places_.find({entry.source, name});
        if (place == places_.end()) continue;
        whole.append(from, name.data()).append(entries_[place->second].name);
        from = name.data() + name.size();
    }
    return whole.append(from, text.data() + text.size());
}

}  // namespace tool
