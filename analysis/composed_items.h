// The items that a composed analysis has: those that were asked for and those that they refer to, with their norms and
// the names that they get.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ComposedAnalysis.h"
#include "analysis/composed_stages.h"
#include "analysis/sheet_body.h"

namespace tool {

class ComposedItems {
 public:
    static constexpr int sexes[] = {1, 2};  // male, female; elsewhere here 0 and 1

    // An analysis that items come from.
    struct Source {
        const Analysis* analysis;
        const SheetBody* sheet;
        StageTable tables[2][2];  // of both sets and sexes

        const StageTable& table(const NamedLine& norm, std::size_t sex) const { return tables[norm.second_set()][sex]; }
    };
    struct Norms {
        std::optional<NamedLine> mean, sd;
    };
    struct Entry {
        std::size_t source;
        NamedLine item;
        Norms norms[2];            // for both sexes
        std::string name;          // in the new file
        bool is_asked = false;     // else only referred to
        bool is_repeated = false;  // the same, with the same norms, as one in front

        std::vector<std::string_view> texts() const;  // the formula and the norms
    };

    explicit ComposedItems(std::span<const ComposedItem> items);

    // Why there is no analysis of them; "" when there is one.
    const std::string& failure() const { return failure_; }
    std::span<const Source> sources() const { return sources_; }
    std::span<const Entry> entries() const { return entries_; }
    const Source& source_of(const Entry& entry) const { return sources_[entry.source]; }
    // The item that a text of the entry calls so; null when there is none.
    const Entry* find(const Entry& entry, std::string_view name) const {
        const auto known = places_.find({entry.source, name});
        return known == places_.end() ? nullptr : &entries_[known->second];
    }
    // What the file says of the entry's item.
    std::string_view of(Sample::ByName Sample::*lines, const Entry& entry) const {
        return Sample::of(source_of(entry).sheet->sample.*lines, entry.item.name);
    }
    // A text of an entry, with the new names where it refers to items.
    std::string renamed(const Entry& entry, std::string_view text) const;

 private:
    void fail(const std::string& reason);
    std::size_t place_of(const Analysis* analysis);
    void add(const ComposedItem& wanted);
    std::size_t entry_of(std::size_t source, std::string_view name);
    void add_references(std::size_t place);
    bool same(const Entry& a, const Entry& b) const;
    bool same_lines(const Entry& a, const Entry& b) const;
    bool same_columns(const Entry& a, const Entry& b, std::optional<NamedLine> Norms::*part, std::size_t sex) const;
    void name_entries();

    std::vector<Source> sources_;
    std::vector<Entry> entries_;
    std::map<std::pair<std::size_t, std::string_view>, std::size_t> places_;  // of entries, by source and name
    std::string failure_;
};

// The beginning of a text in code page 932 that takes so many bytes at most.
std::string_view cut_to(std::string_view text, std::size_t bytes);
// The name of an analysis' file, in UTF-8.
std::string file_name(const Analysis& analysis);
std::string file_stem(const Analysis& analysis);
// "" for what the code page lacks.
std::string cp932(std::string_view utf8);

}  // namespace tool
