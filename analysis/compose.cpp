#include <algorithm>
#include <map>
#include <set>

#include "ComposedAnalysis.h"
#include "analysis/composed_stages.h"
#include "analysis/formula_names.h"
#include "analysis/item_text.h"
#include "analysis/landmark_names.h"
#include "analysis/sheet_body.h"
#include "platform/code_page.h"
#include "platform/text.h"
#include "util/key_value.h"

namespace tool {
namespace {

constexpr std::size_t most_stages = 100;
constexpr int sexes[] = {1, 2};  // male, female

// The beginning of a text in code page 932 that takes so many bytes at most.
std::string_view cut(std::string_view text, std::size_t bytes) {
    std::size_t end = 0;
    while (end < text.size()) {
        const std::size_t next = end + char_length(text.substr(end));
        if (next > std::min(bytes, text.size())) break;
        end = next;
    }
    return text.substr(0, end);
}

std::string file_name(const Analysis& analysis, bool extension) {
    const std::u8string name = (extension ? analysis.file().filename() : analysis.file().filename().stem()).u8string();
    return {name.begin(), name.end()};
}

std::string cp932(std::string_view utf8) {
    return code_page_from_utf8(utf8).value_or(std::string());
}

struct Source {
    const Analysis* analysis;
    const SheetBody* sheet;
    StageTable tables[2][2];  // of both sets and sexes

    const StageTable& table(const NamedLine& norm, std::size_t sex) const { return tables[norm.second_set()][sex]; }
};

// Names of items that a text refers to, as they stand in it.
struct References : FormulaNames {
    explicit References(std::string_view text) { visit_names(text, *this); }
    void landmark(std::string_view) override {}
    void cast_measure(std::string_view) override {}
    void reference(Ask, std::string_view item) override { found.push_back(item); }
    std::vector<std::string_view> found;
};

struct Norms {
    std::optional<NamedLine> mean, sd;
};

struct Entry {
    std::size_t source;
    NamedLine item;
    Norms norms[2];    // for both sexes
    std::string name;  // in the new file
    bool is_asked = false;

    std::vector<std::string_view> texts() const {
        std::vector<std::string_view> all{item.rest};
        for (const Norms& of_sex : norms)
            for (const auto& norm : {of_sex.mean, of_sex.sd})
                if (norm) all.push_back(norm->rest);
        return all;
    }
};

class Composer {
 public:
    Composer(std::string_view title, std::span<const ComposedItem> items) : title_(title) {
        for (const ComposedItem& each : items) add(each);
        for (std::size_t i = 0; i < entries_.size(); ++i) add_references(i);
    }

    Result<std::string> file() {
        if (!failure_.empty()) return Failure{failure_};
        if (entries_.empty()) return Failure{"There is no item to make an analysis of"};
        const auto title = code_page_from_utf8(title_);
        if (!title || trimmed(*title).empty() || title->find_first_of("\r\n") != std::string::npos)
            return Failure{"The title is empty, or has characters that code page 932 lacks"};
        name_entries();
        make_stages();
        if (!failure_.empty()) return Failure{failure_};
        text_.clear();
        line("title:");
        line(*title);
        line("");
        write_comment();
        write_items();
        write_norms();
        write_stages();
        write_parameters();
        return text_;
    }

 private:
    void line(std::string_view text) { text_.append(text).append("\r\n"); }
    void fail(const std::string& reason) {
        if (failure_.empty()) failure_ = reason;
    }

    // --- What there is ---------------------------------------------------------------------------------------------

    std::size_t source_of(const Analysis* analysis) {
        const auto known = std::ranges::find(sources_, analysis, &Source::analysis);
        if (known != sources_.end()) return static_cast<std::size_t>(known - sources_.begin());
        const SheetBody* const sheet = body_of(analysis->sheet());
        Source& added = sources_.emplace_back(Source{analysis, sheet, {}});
        for (const bool second : {false, true})
            for (std::size_t sex = 0; sex < std::size(sexes); ++sex)
                added.tables[second][sex] = stage_table(sheet->file.text(), sexes[sex], second);
        return sources_.size() - 1;
    }

    void add(const ComposedItem& wanted) {
        const SheetBody* const sheet = wanted.analysis ? body_of(wanted.analysis->sheet()) : nullptr;
        const NamedLine* const line = sheet ? sheet->line(static_cast<int>(wanted.item)) : nullptr;
        if (!line) return fail("There is no such item");
        if (!line->rest.data()) return;  // a heading
        if (!sources_.empty() && !same_record(sheet->kind, sources_.front().sheet->kind))
            return fail("Items of " + file_name(*sources_.front().analysis, true) + " and " +
                        file_name(*wanted.analysis, true) + " are not measured on the same kind of case");
        entries_[entry_of(source_of(wanted.analysis), line->name)].is_asked = true;
    }

    // The place of the item among the entries, where it is added when it is not there.
    std::size_t entry_of(std::size_t source, std::string_view name) {
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

    void add_references(std::size_t place) {
        const std::size_t source = entries_[place].source;
        for (const std::string_view text : entries_[place].texts())
            for (const std::string_view name : References(text).found)
                if (const auto item = sources_[source].sheet->file.find_item(name))
                    entry_of(source, item->name);
                else  // counts as 0 there, and would be found here if another analysis had one
                    fail("\"" + utf8_from_code_page(entries_[place].item.name) + "\" of " +
                         file_name(*sources_[source].analysis, true) + " refers to \"" + utf8_from_code_page(name) +
                         "\", which is no item there");
    }

    // --- Names -----------------------------------------------------------------------------------------------------

    std::string_view of(Sample::ByName Sample::*lines, const Entry& entry) const {
        return Sample::of(sources_[entry.source].sheet->sample.*lines, entry.item.name);
    }

    // Whether both are the same item with the same norms.
    bool same(const Entry& a, const Entry& b, int depth = 0) const {
        constexpr int deepest = 20;
        if (depth > deepest || a.item.name != b.item.name || a.texts() != b.texts()) return false;
        for (const auto lines : {&Sample::signs, &Sample::japanese, &Sample::unverified})
            if (of(lines, a) != of(lines, b)) return false;
        for (std::size_t sex = 0; sex < std::size(sexes); ++sex)
            for (const auto part : {&Norms::mean, &Norms::sd})
                if (!same_columns(a, b, part, sex)) return false;
        for (const std::string_view text : a.texts())
            for (const std::string_view name : References(text).found) {
                const auto theirs = places_.find({a.source, name}), others = places_.find({b.source, name});
                if (theirs == places_.end() && others == places_.end()) continue;
                if (theirs == places_.end() || others == places_.end()) return false;
                if (!same(entries_[theirs->second], entries_[others->second], depth + 1)) return false;
            }
        return true;
    }

    bool same_columns(const Entry& a, const Entry& b, std::optional<NamedLine> Norms::*part, std::size_t sex) const {
        const auto &mine = a.norms[sex].*part, &other = b.norms[sex].*part;
        if (mine.has_value() != other.has_value()) return false;
        if (!mine || !norms_differ(mine->rest)) return true;
        return std::ranges::equal(sources_[a.source].table(*mine, sex), sources_[b.source].table(*other, sex),
                                  [](const StagePlace& x, const StagePlace& y) {
                                      return x.range.from == y.range.from && x.range.to == y.range.to &&
                                             x.by_age == y.by_age;
                                  });
    }

    void name_entries() {
        std::set<std::string, std::less<>> taken;
        for (Entry& entry : entries_) {
            const auto first = std::ranges::find_if(
                entries_, [&](const Entry& other) { return !other.name.empty() && same(other, entry); });
            if (first != entries_.end()) {
                first->is_asked = first->is_asked || entry.is_asked;
                entry.name = first->name;
                repeated_.insert(&entry);
                continue;
            }
            const std::string stem = cp932(file_name(*sources_[entry.source].analysis, false));
            entry.name = entry.item.name;
            for (int number = 1; !taken.insert(entry.name).second; ++number) {
                const std::string mark =
                    " (" + std::string(cut(stem, 30)) + (number > 1 ? " " + std::to_string(number) : "") + ")";
                entry.name = std::string(cut(entry.item.name, longest_key - mark.size())) + mark;
            }
        }
    }

    // A text of an entry, with the new names where it refers to items.
    std::string renamed(const Entry& entry, std::string_view text) const {
        std::string whole;
        const char* from = text.data();
        for (const std::string_view name : References(text).found) {
            const auto place = places_.find({entry.source, name});
            if (place == places_.end()) continue;
            whole.append(from, name.data()).append(entries_[place->second].name);
            from = name.data() + name.size();
        }
        return whole.append(from, text.data() + text.size());
    }

    // --- Stages ----------------------------------------------------------------------------------------------------

    // A norm that has columns for stages.
    bool goes_by_stage(const Entry& entry, const NamedLine& norm, std::size_t sex) const {
        return norms_differ(norm.rest) && !sources_[entry.source].table(norm, sex).empty();
    }

    template <class Visit>
    void for_each_norm(Visit visit) const {
        for (const Entry& entry : entries_)
            for (std::size_t sex = 0; sex < std::size(sexes); ++sex)
                for (const auto& norm : {entry.norms[sex].mean, entry.norms[sex].sd})
                    if (norm) visit(entry, *norm, sex);
    }

    void make_stages() {
        std::set<const StageTable*> tables;
        const Source *by_age = nullptr, *by_teeth = nullptr;
        for_each_norm([&](const Entry& entry, const NamedLine& norm, std::size_t sex) {
            if (!goes_by_stage(entry, norm, sex)) return;
            const Source& source = sources_[entry.source];
            tables.insert(&source.table(norm, sex));
            for (const StagePlace& stage : source.table(norm, sex)) (stage.by_age ? by_age : by_teeth) = &source;
        });
        if (by_age && by_teeth)
            return fail("The norms of " + file_name(*by_age->analysis, true) + " go by the age, those of " +
                        file_name(*by_teeth->analysis, true) +
                        " by the teeth, and a file has one of them; make a file of each");
        by_age_ = !by_teeth;
        stages_ = cut_at_all_borders(tables, by_age_);
        if (stages_.size() > most_stages)
            fail("The stages of these analyses have more than 100 borders; make a file of fewer of them");
    }

    // The values of a norm for the stages of the new file.
    std::string values(const Entry& entry, const NamedLine& norm, std::size_t sex) const {
        if (!goes_by_stage(entry, norm, sex)) return renamed(entry, norm_field(norm.rest, 0));
        const StageTable& table = sources_[entry.source].table(norm, sex);
        std::string list;
        bool any = false;
        for (const StageRange& stage : stages_) {
            const auto place = place_in(table, stage.from);
            const std::string_view field = place ? norm_field(norm.rest, *place) : std::string_view();
            any = any || !field.empty();
            if (&stage != &stages_.front()) list += ',';
            list += renamed(entry, field);
        }
        if (!any) return {};
        return norms_differ(list) ? list : list + ',';  // outside of the stages there is none
    }

    // --- The file --------------------------------------------------------------------------------------------------

    bool is_written(const Entry& entry) const { return !repeated_.contains(&entry); }

    void write_comment() {
        std::string names;
        for (const Source& source : sources_) names += (names.empty() ? "" : ", ") + file_name(*source.analysis, true);
        line("Comment:");
        line(cp932("Made of items of " + names));
        for (const Source& source : sources_)
            line(cp932(file_name(*source.analysis, true) + ": " +
                       (source.analysis->population() ? source.analysis->population()->text + ". " : "") +
                       source.analysis->comment()));
        line("");
    }

    // The English part of a title "English (Japanese)", and the Japanese one.
    static std::pair<std::string, std::string> parts_of(const std::string& title) {
        const std::size_t bracket = title.rfind(" (");
        if (bracket == std::string::npos || !title.ends_with(')')) return {title, {}};
        return {title.substr(0, bracket), title.substr(bracket + 2, title.size() - bracket - 3)};
    }

    void write_heading(const std::string& english, const std::string& japanese) {
        const std::string name(cut(cp932(english), longest_key)), translated = cp932(japanese);
        const bool is_item = std::ranges::any_of(entries_, [&](const Entry& entry) { return entry.name == name; });
        if (name.empty() || is_item || name.find_first_of("=[(:") != std::string::npos) return;
        line(name);
        if (!translated.empty()) headings_.emplace(name, translated);
    }

    void write_items() {
        line("Calc:");
        const Source* above = nullptr;
        for (const bool asked : {true, false}) {
            if (!asked && std::ranges::any_of(entries_, [&](const Entry& e) { return is_written(e) && !e.is_asked; }))
                write_heading("Referred to", "参照項目");
            for (const Entry& entry : entries_) {
                if (entry.is_asked != asked || !is_written(entry)) continue;
                const Source* const source = &sources_[entry.source];
                if (asked && source != above && sources_.size() > 1) {
                    const auto [english, japanese] = parts_of(source->analysis->title());
                    write_heading(english, japanese);
                }
                above = source;
                line(entry.name + "=" + renamed(entry, entry.item.rest));
            }
        }
        line("");
    }

    void write_norms() {
        struct Section {
            std::string_view key;
            std::optional<NamedLine> Norms::*part;
            int sex;  // -1: norms that are the same for both
        };
        constexpr Section sections[] = {{"Mean:", &Norms::mean, -1},  {"SD:", &Norms::sd, -1},
                                        {"Mean_M:", &Norms::mean, 0}, {"SD_M:", &Norms::sd, 0},
                                        {"Mean_F:", &Norms::mean, 1}, {"SD_F:", &Norms::sd, 1}};
        for (const Section& section : sections) {
            bool any = false;
            for (const Entry& entry : entries_) {
                if (!is_written(entry)) continue;
                std::string lists[2];
                for (std::size_t sex = 0; sex < std::size(sexes); ++sex)
                    if (const auto& norm = entry.norms[sex].*section.part) lists[sex] = values(entry, *norm, sex);
                const bool for_both = lists[0] == lists[1];
                const std::string& list = lists[section.sex == 1];
                if (for_both != (section.sex < 0) || trimmed(list).empty()) continue;
                if (!any) line(section.key);
                any = true;
                line(entry.name + "=" + list);
            }
            if (any) line("");
        }
    }

    // Those of the tables that its norms go by, in the order of the sources.
    std::pair<std::string, std::string> stage_name(const StageRange& stage) const {
        std::vector<std::string_view> names;
        std::string japanese;
        for_each_norm([&](const Entry& entry, const NamedLine& norm, std::size_t sex) {
            if (!goes_by_stage(entry, norm, sex)) return;
            const StageTable& table = sources_[entry.source].table(norm, sex);
            const auto place = place_in(table, stage.from);
            if (!place) return;
            const std::string_view name = table[static_cast<std::size_t>(*place)].name;
            if (std::ranges::find(names, name) != names.end()) return;
            names.push_back(name);
            japanese = Sample::of(sources_[entry.source].sheet->sample.japanese, name);
        });
        std::string name;
        for (const std::string_view each : names) name.append(name.empty() ? "" : "/").append(each);
        constexpr std::size_t longest = 49;
        return {std::string(cut(name, longest)), names.size() == 1 ? japanese : std::string()};
    }

    void write_stages() {
        if (stages_.empty()) return;
        line("Stage_Type:");
        line(by_age_ ? "Age" : "Hellman");
        line("Stage:");
        for (const StageRange& stage : stages_) {
            const auto [name, japanese] = stage_name(stage);
            line(name + "=" + range_text(stage, by_age_));
            if (!japanese.empty()) headings_.emplace(name, japanese);
        }
        line("");
    }

    bool has_norms(const Source& source) const {
        return std::ranges::any_of(entries_, [&](const Entry& entry) {
            return &sources_[entry.source] == &source && (entry.norms[0].mean || entry.norms[1].mean);
        });
    }

    void write_parameters() {
        line("Param:");
        AgeRange ages;
        bool known = false;
        std::set<std::string> populations;
        std::string whose, only;
        for (const Source& source : sources_) {
            if (!has_norms(source)) continue;
            if (const auto& theirs = source.sheet->sample.ages) {
                known = true;
                ages.from = std::max(ages.from, theirs->from);
                if (theirs->to) ages.to = std::min(ages.to.value_or(*theirs->to), *theirs->to);
            }
            const auto& population = source.analysis->population();
            populations.insert(population ? population->name : "");
            only = population ? population->text : "";
            whose += (whose.empty() ? "" : "; ") + file_name(*source.analysis, false) + " " +
                     (population ? population->name : "not given");
        }
        if (known && (!ages.to || ages.from <= *ages.to))
            line(std::string(ages_key) + "=" + std::to_string(ages.from) + "-" +
                 (ages.to ? std::to_string(*ages.to) : ""));
        if (populations.size() > 1) only = "Mixed, " + whose;
        if (!only.empty()) line(std::string(population_key) + "=" + cp932(only));
        std::map<std::string_view, std::set<std::string>> written;
        const auto write = [&](std::string_view key, const std::string& name, std::string_view words) {
            if (!words.empty() && written[key].insert(name).second)
                line(std::string(key) + name + "=" + std::string(words));
        };
        for (const Entry& entry : entries_) {
            if (!is_written(entry)) continue;
            const std::string japanese(of(&Sample::japanese, entry));
            const bool is_renamed = entry.name != entry.item.name;
            write(sign_key, entry.name, of(&Sample::signs, entry));
            write(unverified_key, entry.name, of(&Sample::unverified, entry));
            write(japanese_key, entry.name,
                  is_renamed && !japanese.empty() ? japanese + entry.name.substr(entry.name.rfind(" (")) : japanese);
            for (const auto& [text, translated] : sources_[entry.source].sheet->sample.japanese)
                if (entry.item.rest.find('"' + std::string(text) + '"') != std::string_view::npos)
                    write(japanese_key, std::string(text), translated);
        }
        for (const auto& [name, japanese] : headings_) write(japanese_key, name, japanese);
    }

    std::string_view title_;
    std::vector<Source> sources_;
    std::vector<Entry> entries_;
    std::map<std::pair<std::size_t, std::string_view>, std::size_t> places_;  // of entries, by source and name
    std::set<const Entry*> repeated_;                                         // the same as one in front
    std::vector<StageRange> stages_;
    bool by_age_ = true;
    std::map<std::string, std::string> headings_;  // and stages, with their Japanese names
    std::string failure_, text_;
};

}  // namespace

Result<std::string> compose(std::string_view title, std::span<const ComposedItem> items) {
    return Composer(title, items).file();
}

}  // namespace tool
