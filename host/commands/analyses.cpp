// cephtool analyses: what there is to measure with.
#include <CodePage.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/columns.h"
#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_record.h"
#include "cases/vertebrae.h"
#include "host/command_line.h"
#include "host/output.h"
#include "host/selection.h"
#include "results/names.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

struct Norm {
    std::string mean, sd;  // as the file has them; "formula" where it takes landmarks to know
};

// What the first band says about one item; of a heading only its names count.
struct ItemSummary {
    const tool::Item* item;
    std::string name, label, formula;
    Norm male, female;
};

std::string text_of(const CString& code_page_932) {
    return printable(Utf8FromCodePage932(code_page_932));
}

std::string norm_text(const AnalysisSheet& sheet, int index, SheetPart part, const SheetSubject& nobody) {
    if (!sheet.Missing(index, part, nobody).IsEmpty()) return "formula";
    constexpr double unused_scale = 1;
    return text_of(sheet.Get_MeanSD(sheet.GetItem(index).name, part == SheetPart::sd, nobody, unused_scale, 1));
}

std::vector<ItemSummary> items_of(const Analysis& analysis, const Texts& texts) {
    Case blank;
    blank.kind = case_kind(analysis);
    blank.mm_per_pixel = 1;
    CaseRecord fields(blank);
    std::vector<ItemSummary> items;
    int index = -1;
    for (const tool::Item& item : analysis.items()) {
        ++index;
        const auto norm = [&](Sex sex) {
            if (item.heading) return Norm{};
            const SheetSubject nobody = fields.subject(static_cast<int>(sex), 0);
            return Norm{norm_text(analysis.sheet(), index, SheetPart::mean, nobody),
                        norm_text(analysis.sheet(), index, SheetPart::sd, nobody)};
        };
        items.push_back({&item, printable(item.name), label_of(item, texts), printable(item.formula), norm(Sex::male),
                         norm(Sex::female)});
    }
    return items;
}

int item_count(const Analysis& analysis) {
    return static_cast<int>(std::ranges::count(analysis.items(), false, &tool::Item::heading));
}

std::string shown(const Norm& norm, bool unverified, const Texts& texts) {
    if (norm.mean.empty()) return texts("no norm");
    return norm.mean + (unverified ? unverified_mark : "") + (norm.sd.empty() ? "" : " ± " + norm.sd);
}

// Where the name shown is not the one that the file has, that stands in front of the formula.
std::string shown(const ItemSummary& summary, const Texts& texts) {
    const tool::Item& item = *summary.item;
    if (item.heading) return summary.label + "\n";
    const bool unverified = !item.unverified.empty();
    const std::string male = shown(summary.male, unverified, texts), female = shown(summary.female, unverified, texts);
    const std::string norm = male == female ? male : texts("men %1, women %2", male, female);
    const std::string formula = (summary.label == summary.name ? "" : summary.name + "=") + summary.formula;
    constexpr int name_width = 34;
    const auto below = [](const char* mark, const std::string& text) {
        return text.empty() ? "" : "    " + (mark + wrapped(text, page_width - 6, "      ")) + "\n";
    };
    return left_aligned(fitted(summary.label, name_width), name_width) + " " + left_aligned(item.unit, 4) + " " + norm +
           "\n    " + wrapped(formula, page_width - 4, "    ") + "\n" +
           below("+ ", printable(texts.language() == Language::english ? item.sign : texts.part(item.sign))) +
           below("† ", printable(texts.part(item.unverified)));
}

std::string shown(const std::optional<tool::Ages>& ages, const Texts& texts) {
    if (!ages) return "";
    const std::string from = std::to_string(ages->from);
    return (ages->to ? texts("Norms of people of %1 to %2 years", from, std::to_string(*ages->to))
                     : texts("Norms of people of %1 years and older", from)) +
           "\n";
}

// Those that no table of the kind has, with where to read what they are.
std::string own_landmarks(const Analysis& analysis, const Texts& texts) {
    const Kind kind = case_kind(analysis);
    std::vector<std::string> known = landmark_names(kind);
    for (std::string& name : vertebra_point_names()) known.push_back(std::move(name));
    std::string names;
    for (const std::string& name : analysis.inputs().landmarks)
        if (std::ranges::find(known, name) == known.end()) names += (names.empty() ? "" : ", ") + printable(name);
    if (names.empty()) return "";
    const std::string words =
        texts("With landmarks of your own: %1. docs/landmarks.md says where those of shipped files lie.", names);
    return wrapped(words, page_width, "") + "\n";
}

// Whose norms an analysis has, and which other ones there are.
std::string populations_of(const AnalysisFamily& family, const Analysis& shown, const Texts& texts) {
    if (!shown.has_norms() || (!shown.population() && family.variants.empty())) return "";
    std::vector<std::string> others;
    const auto add = [&](const Analysis* analysis) {
        if (analysis == &shown || !analysis->population()) return;
        const std::string& name = analysis->population()->name;
        others.push_back(printable(texts.chosen(name, analysis->population()->japanese)) + " (" + file_of(*analysis) +
                         ")");
    };
    add(family.base);
    for (const Analysis* variant : family.variants) add(variant);
    const std::string own =
        texts("Norms: %1", shown.population() ? in_words(*shown.population(), texts) : texts("not given"));
    return others.empty() ? own : texts("%1. By --population: %2", own, joined(others, ", "));
}

std::string shown(const AnalysisFamily& family, const Analysis& analysis, const Texts& texts) {
    std::string text = title_of(analysis, texts) + "\n";
    const std::string populations = populations_of(family, analysis, texts);
    const std::string comment = comment_of(analysis, texts);
    if (!comment.empty()) text += wrapped(comment, page_width, "") + "\n";
    if (!populations.empty()) text += wrapped(populations, page_width, "") + "\n";
    text += shown(analysis.ages(), texts);
    text += texts(kind_name(analysis)) + ", " + file_of(analysis) + "\n";
    text += own_landmarks(analysis, texts) + "\n";
    for (const ItemSummary& item : items_of(analysis, texts)) text += shown(item, texts);
    return text;
}

std::string shown(std::span<const AnalysisFamily> families, const std::string& population, const Texts& texts) {
    constexpr int kind_width = 10, title_width = 40;
    std::string text = left_aligned(texts("Kind"), kind_width) + left_aligned(texts("Analysis"), title_width) + " " +
                       texts("Items") + "  " + texts("File") + "\n";
    for (const AnalysisFamily& family : families) {
        const Analysis& analysis = *family.of(population);
        text += left_aligned(texts(kind_name(analysis)), kind_width) +
                left_aligned(fitted(title_of(analysis, texts), title_width), title_width) + " " +
                right_aligned(std::to_string(item_count(analysis)), 5) + "  " + file_of(analysis) + "\n";
        const std::string indent(kind_width + 2, ' ');
        for (const std::string& line : {comment_of(analysis, texts), populations_of(family, analysis, texts)})
            if (!line.empty()) text += indent + wrapped(line, page_width - kind_width - 2, indent) + "\n";
    }
    return text;
}

Json json_of(const Norm& norm) {
    return {{"mean", norm.mean}, {"sd", norm.sd}};
}

Json json_of(const Analysis& analysis, bool with_items, const Texts& texts) {
    const auto& population = analysis.population();
    Json json = {{"title", title_of(analysis)},
                 {"label", title_of(analysis, texts)},
                 {"kind", kind_name(analysis)},
                 {"file", file_of(analysis)},
                 {"comment", comment_of(analysis)},
                 {"population", population ? Json(printable(population->name)) : Json(nullptr)},
                 {"item_count", item_count(analysis)}};
    if (population) json["population_label"] = in_words(*population, texts);
    if (!analysis.variant_of().empty()) json["variant_of"] = printable(analysis.variant_of());
    if (const auto& ages = analysis.ages())
        json["ages"] = {{"from", ages->from}, {"to", ages->to ? Json(*ages->to) : Json(nullptr)}};
    if (!with_items) return json;
    const tool::Inputs& inputs = analysis.inputs();
    json["inputs"] = {{"sex", inputs.sex}, {"age", inputs.age}, {"dental_stage", inputs.dental_stage}};
    for (const std::string& name : inputs.landmarks) json["inputs"]["landmarks"].push_back(printable(name));
    json["items"] = Json::array();
    ItemSummary group{};
    for (const ItemSummary& summary : items_of(analysis, texts)) {
        if (summary.item->heading) {
            group = summary;
            continue;
        }
        Json& row = json["items"].emplace_back(Json{{"name", summary.name},
                                                    {"label", summary.label},
                                                    {"formula", summary.formula},
                                                    {"unit", summary.item->unit},
                                                    {"male", json_of(summary.male)},
                                                    {"female", json_of(summary.female)}});
        const auto add = [&](const char* key, const std::string& text) {
            if (!text.empty()) row[key] = printable(texts.part(text));
        };
        add("sign", summary.item->sign);
        add("unverified", summary.item->unverified);
        add("group", group.name);
        add("group_label", group.label);
    }
    return json;
}

std::string as_json(std::span<const Analysis* const> analyses, bool with_items, const Texts& texts) {
    Json all = Json::array();
    for (const Analysis* analysis : analyses) all.push_back(json_of(*analysis, with_items, texts));
    return Json({{"analyses", all}}).dump(2) + "\n";
}

}  // namespace

ExitCode run_analyses(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string name, folder, output, asked;
    ResultFormat format{};
    Language language = Language::english;
    CommandLine line(command, "cephtool analyses", "cephtool analyses --format json");
    line.add_argument("NAME", name, "title or file name of an analysis");
    line.add_analysis_folder(folder);
    line.add_population(asked);
    line.add_language(language, "en or ja: of names and texts");
    line.add_format(format, output, {ResultFormat::table, ResultFormat::json});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    const Selection selection(folder, {}, streams);
    std::vector<AnalysisFamily> families(selection.chosen().begin(), selection.chosen().end());
    if (!name.empty()) {
        std::vector<AnalysisFamily> asked_for;
        for (const Analysis* analysis : named(selection.listed(), name)) {
            const auto family = std::ranges::find(families, analysis, &AnalysisFamily::base);
            asked_for.push_back(family == families.end() ? AnalysisFamily(analysis) : *family);
        }
        families = std::move(asked_for);
        if (families.empty()) throw unknown_analysis(selection.listed(), name);
    }
    const std::string population = tool::population_named(asked).name;
    selection.check_population(population);

    const Texts texts(language);
    std::string text;
    if (format == ResultFormat::json) {
        std::vector<const Analysis*> all;
        for (const AnalysisFamily& family : families) {
            all.push_back(family.of(population));
            if (!name.empty() || !population.empty()) continue;
            all.insert(all.end(), family.variants.begin(), family.variants.end());
        }
        text = as_json(all, !name.empty(), texts);
    } else if (name.empty()) {
        text = shown(families, population, texts);
    } else {
        for (const AnalysisFamily& family : families) text += shown(family, *family.of(population), texts);
    }
    write_result(text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
