#include <algorithm>
#include <map>
#include <set>

#include "analysis/composed_items.h"
#include "analysis/formula_names.h"
#include "analysis/item_text.h"
#include "platform/code_page.h"
#include "platform/text.h"
#include "util/key_value.h"

namespace tool {
namespace {

using Source = ComposedItems::Source;
using Entry = ComposedItems::Entry;
using Norms = ComposedItems::Norms;

constexpr std::size_t most_stages = 100;

class Composer {
 public:
    Composer(std::string_view title, std::span<const ComposedItem> items) : title_(title), items_(items) {}

    Result<std::string> file() {
        if (!items_.failure().empty()) return Failure{items_.failure()};
        const auto title = code_page_from_utf8(title_);
        if (!title || trimmed(*title).empty() || title->find_first_of("\r\n") != std::string::npos)
            return Failure{"The title is empty, or has characters that code page 932 lacks"};
        const std::string failure = make_stages();
        if (!failure.empty()) return Failure{failure};
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

    // --- Stages ----------------------------------------------------------------------------------------------------

    // A norm that has columns for stages.
    bool goes_by_stage(const Entry& entry, const NamedLine& norm, std::size_t sex) const {
        return norms_differ(norm.rest) && !items_.source_of(entry).table(norm, sex).empty();
    }

    // The norms for one sex that go by stages.
    std::vector<const NamedLine*> staged(const Entry& entry, std::size_t sex) const {
        std::vector<const NamedLine*> found;
        for (const auto part : {&Norms::mean, &Norms::sd})
            if (const auto& norm = entry.norms[sex].*part; norm && goes_by_stage(entry, *norm, sex))
                found.push_back(&*norm);
        return found;
    }

    // Where one of its norms has no column, an item has none in its own analysis.
    bool has_norms_at(const StageRange& stage, const Entry& entry, std::size_t sex) const {
        return std::ranges::all_of(staged(entry, sex), [&](const NamedLine* norm) {
            return place_in(items_.source_of(entry).table(*norm, sex), stage.from).has_value();
        });
    }

    bool has_norms_at_all_stages(const Entry& entry, std::size_t sex) const {
        return !stages_.empty() &&
               std::ranges::all_of(stages_, [&](const StageRange& stage) { return has_norms_at(stage, entry, sex); });
    }

    // A field takes in the comma behind it when a bracket, or a character of two bytes, is left open.
    std::string refused_norm() const {
        std::string refused;
        for_each_norm([&](const Entry& entry, const NamedLine& norm, std::size_t) {
            for (const std::string_view field : norm_fields(norm.rest))
                if (norm_fields(std::string(field) + ",").size() != 2)
                    refused = "A norm of \"" + utf8_from_code_page(entry.item.name) + "\" of " +
                              file_name(*items_.source_of(entry).analysis) + " has a bracket that is not closed";
        });
        return refused;
    }

    // A formula that takes a norm has no value where the norm has no column; an empty norm would be taken for 0 there.
    std::string refused_reference() const {
        for (const Entry& entry : items_.entries())
            for (const std::string_view text : entry.texts())
                for (const auto& [ask, name] : references_in(text)) {
                    const Entry* const of = ask == Ask::value ? nullptr : items_.find(entry, name);
                    for (std::size_t sex = 0; of && sex < std::size(ComposedItems::sexes); ++sex)
                        if (!staged(*of, sex).empty() && !has_norms_at_all_stages(*of, sex))
                            return "\"" + utf8_from_code_page(entry.item.name) + "\" of " +
                                   file_name(*items_.source_of(entry).analysis) + " takes a norm of \"" +
                                   utf8_from_code_page(name) +
                                   "\", which it has for some of the stages of these analyses only; make a file of each";
                }
        return {};
    }

    template <class Visit>
    void for_each_norm(Visit visit) const {
        for (const Entry& entry : items_.entries())
            for (std::size_t sex = 0; sex < std::size(ComposedItems::sexes); ++sex)
                for (const auto& norm : {entry.norms[sex].mean, entry.norms[sex].sd})
                    if (norm) visit(entry, *norm, sex);
    }

    // Why they can't be made; "" when they were.
    std::string make_stages() {
        std::set<const StageTable*> tables;
        const Source *by_age = nullptr, *by_teeth = nullptr;
        for_each_norm([&](const Entry& entry, const NamedLine& norm, std::size_t sex) {
            if (!goes_by_stage(entry, norm, sex)) return;
            const Source& source = items_.source_of(entry);
            tables.insert(&source.table(norm, sex));
            for (const StagePlace& stage : source.table(norm, sex)) (stage.by_age ? by_age : by_teeth) = &source;
        });
        if (by_age && by_teeth)
            return "The norms of " + file_name(*by_age->analysis) + " go by the age, those of " +
                   file_name(*by_teeth->analysis) + " by the teeth, and a file has one of them; make a file of each";
        by_age_ = !by_teeth;
        stages_ = cut_at_all_borders(tables, by_age_);
        if (stages_.size() > most_stages)
            return "The stages of these analyses have more than 100 borders; make a file of fewer of them";
        const std::string refused = refused_norm();
        return refused.empty() ? refused_reference() : refused;
    }

    // "" where it has none.
    std::string_view field_at(const StageRange& stage, const Entry& entry, const NamedLine& norm,
                              std::size_t sex) const {
        if (!has_norms_at(stage, entry, sex)) return {};
        const StageTable& table = items_.source_of(entry).table(norm, sex);
        return norm_field(norm.rest, goes_by_stage(entry, norm, sex) ? *place_in(table, stage.from) : 0);
    }

    // Whether the norms that go by stages tell by themselves where this item has any.
    bool stages_stand_in_the_file(const Entry& entry, std::size_t sex) const {
        return has_norms_at_all_stages(entry, sex) &&
               std::ranges::any_of(staged(entry, sex), [&](const NamedLine* norm) {
                   return std::ranges::any_of(
                       stages_, [&](const StageRange& stage) { return !field_at(stage, entry, *norm, sex).empty(); });
               });
    }

    // The values of a norm for the stages of the new file.
    std::string values(const Entry& entry, const NamedLine& norm, std::size_t sex) const {
        if (!goes_by_stage(entry, norm, sex) && (staged(entry, sex).empty() || stages_stand_in_the_file(entry, sex)))
            return items_.renamed(entry, norm_field(norm.rest, 0));
        std::string list;
        bool any = false;
        for (const StageRange& stage : stages_) {
            const std::string_view field = field_at(stage, entry, norm, sex);
            any = any || !field.empty();
            if (&stage != &stages_.front()) list += ',';
            list += items_.renamed(entry, field);
        }
        if (!any) return {};
        return norms_differ(list) ? list : list + ',';  // outside of the stages there is none
    }

    // --- The file --------------------------------------------------------------------------------------------------

    void write_comment() {
        std::string names;
        for (const Source& source : items_.sources())
            names += (names.empty() ? "" : ", ") + file_name(*source.analysis);
        line("Comment:");
        line(cp932("Made of items of " + names));
        for (const Source& source : items_.sources())
            line(cp932(file_name(*source.analysis) + ": " +
                       (source.analysis->population() ? source.analysis->population()->text + ". " : "") +
                       source.analysis->comment()));
        line("");
    }

    void write_heading(const std::string& english, const std::string& japanese) {
        const std::string name(cut_to(cp932(english), longest_key)), translated = cp932(japanese);
        const bool is_item =
            std::ranges::any_of(items_.entries(), [&](const Entry& entry) { return entry.name == name; });
        if (name.empty() || is_item || name.find_first_of("=[(:") != std::string::npos) return;
        line(name);
        if (!translated.empty()) headings_.emplace(name, translated);
    }

    // Of a title "English (Japanese)", or an English one.
    void write_heading_of(const std::string& title) {
        const std::size_t bracket = title.ends_with(')') ? title.rfind(" (") : std::string::npos;
        if (bracket == std::string::npos) return write_heading(title, {});
        write_heading(title.substr(0, bracket), title.substr(bracket + 2, title.size() - bracket - 3));
    }

    void write_items() {
        line("Calc:");
        const Source* above = nullptr;
        for (const bool asked : {true, false}) {
            if (!asked &&
                std::ranges::any_of(items_.entries(), [&](const Entry& e) { return !e.is_repeated && !e.is_asked; }))
                write_heading("Referred to", "参照項目");
            for (const Entry& entry : items_.entries()) {
                if (entry.is_asked != asked || entry.is_repeated) continue;
                const Source* const source = &items_.source_of(entry);
                if (asked && source != above && items_.sources().size() > 1)
                    write_heading_of(source->analysis->title());
                above = source;
                line(entry.name + "=" + items_.renamed(entry, entry.item.rest));
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
            for (const Entry& entry : items_.entries()) {
                if (entry.is_repeated) continue;
                std::string lists[2];
                for (std::size_t sex = 0; sex < std::size(ComposedItems::sexes); ++sex)
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
            const StageTable& table = items_.source_of(entry).table(norm, sex);
            const auto place = place_in(table, stage.from);
            if (!place) return;
            const std::string_view name = table[static_cast<std::size_t>(*place)].name;
            if (std::ranges::find(names, name) != names.end()) return;
            names.push_back(name);
            japanese = Sample::of(items_.source_of(entry).sheet->sample.japanese, name);
        });
        std::string name;
        for (const std::string_view each : names) name.append(name.empty() ? "" : "/").append(each);
        return {std::string(cut_to(name, longest_stage_name)), names.size() == 1 ? japanese : std::string()};
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
        return std::ranges::any_of(items_.entries(), [&](const Entry& entry) {
            return &items_.source_of(entry) == &source && (entry.norms[0].mean || entry.norms[1].mean);
        });
    }

    void write_parameters() {
        line("Param:");
        AgeRange ages;
        bool known = false;
        std::set<std::string> populations;
        std::string whose, only;
        for (const Source& source : items_.sources()) {
            if (!has_norms(source)) continue;
            if (const auto& theirs = source.sheet->sample.ages) {
                known = true;
                ages.from = std::max(ages.from, theirs->from);
                if (theirs->to) ages.to = std::min(ages.to.value_or(*theirs->to), *theirs->to);
            }
            const auto& population = source.analysis->population();
            populations.insert(population ? population->name : "");
            only = population ? population->text : "";
            whose += (whose.empty() ? "" : "; ") + file_stem(*source.analysis) + " " +
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
        for (const Entry& entry : items_.entries()) {
            if (entry.is_repeated) continue;
            const std::string japanese(items_.of(&Sample::japanese, entry));
            const bool is_renamed = entry.name != entry.item.name;
            write(sign_key, entry.name, items_.of(&Sample::signs, entry));
            write(unverified_key, entry.name, items_.of(&Sample::unverified, entry));
            write(japanese_key, entry.name,
                  is_renamed && !japanese.empty() ? japanese + entry.name.substr(entry.name.rfind(" (")) : japanese);
            for (const auto& [text, translated] : items_.source_of(entry).sheet->sample.japanese)
                if (entry.item.rest.find('"' + std::string(text) + '"') != std::string_view::npos)
                    write(japanese_key, std::string(text), translated);
        }
        for (const auto& [name, japanese] : headings_) write(japanese_key, name, japanese);
    }

    std::string_view title_;
    ComposedItems items_;
    std::vector<StageRange> stages_;
    bool by_age_ = true;
    std::map<std::string, std::string> headings_;  // and stages, with their Japanese names
    std::string text_;
};

}  // namespace

Result<std::string> compose(std::string_view title, std::span<const ComposedItem> items) {
    return Composer(title, items).file();
}

}  // namespace tool
