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
#include "results/analysis_folder.h"
#include "results/texts.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

struct Norm {
    std::string mean, sd;  // as the file has them; "formula" where it takes landmarks to know
};

// What the first band says about one item.
struct ItemSummary {
    bool heading = false;  // of the items below it; then only the name counts
    std::string name, formula, unit, sign;
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

std::vector<ItemSummary> items_of(const Analysis& analysis) {
    Case blank;
    blank.kind = case_kind(analysis);
    blank.mm_per_pixel = 1;
    CaseRecord fields(blank);
    std::vector<ItemSummary> items;
    int index = -1;
    for (const tool::Item& item : analysis.items()) {
        ++index;
        if (item.heading) {
            items.push_back({true, printable(item.name), "", "", "", {}, {}});
            continue;
        }
        const auto norm = [&](Sex sex) {
            const SheetSubject nobody = fields.subject(static_cast<int>(sex), 0);
            return Norm{norm_text(analysis.sheet(), index, SheetPart::mean, nobody),
                        norm_text(analysis.sheet(), index, SheetPart::sd, nobody)};
        };
        items.push_back({false, printable(item.name), printable(item.formula), item.unit, printable(item.sign),
                         norm(Sex::male), norm(Sex::female)});
    }
    return items;
}

int item_count(const Analysis& analysis) {
    return static_cast<int>(std::ranges::count(analysis.items(), false, &tool::Item::heading));
}

std::string shown(const Norm& norm) {
    if (norm.mean.empty()) return "no norm";
    return norm.mean + (norm.sd.empty() ? "" : " ± " + norm.sd);
}

std::string shown(const ItemSummary& item) {
    if (item.heading) return item.name + "\n";
    const std::string male = shown(item.male), female = shown(item.female);
    const std::string norm = male == female ? male : "men " + male + ", women " + female;
    constexpr int name_width = 34;
    return left_aligned(fitted(item.name, name_width), name_width) + " " + left_aligned(item.unit, 4) + " " + norm +
           "\n    " + wrapped(item.formula, page_width - 4, "    ") + "\n" +
           (item.sign.empty() ? "" : "    + " + wrapped(item.sign, page_width - 6, "      ") + "\n");
}

std::string shown(const std::optional<tool::Ages>& ages) {
    if (!ages) return "";
    const std::string from = std::to_string(ages->from);
    return "Norms of people of " +
           (ages->to ? from + " to " + std::to_string(*ages->to) + " years" : from + " years and older") + "\n";
}

// Those that no table of the kind has, with where to read what they are.
std::string own_landmarks(const Analysis& analysis) {
    const Kind kind = case_kind(analysis);
    std::vector<std::string> known = landmark_names(kind);
    for (std::string& name : vertebra_point_names()) known.push_back(std::move(name));
    std::string names;
    for (const std::string& name : analysis.inputs().landmarks)
        if (std::ranges::find(known, name) == known.end()) names += (names.empty() ? "" : ", ") + printable(name);
    if (names.empty()) return "";
    return wrapped(
               "With landmarks of your own: " + names + ". docs/landmarks.md says where those of shipped files lie.",
               page_width, "") +
           "\n";
}

std::string shown(const Analysis& analysis) {
    std::string text = title_of(analysis) + "\n";
    if (!comment_of(analysis).empty()) text += wrapped(comment_of(analysis), page_width, "") + "\n";
    text += shown(analysis.ages());
    text += std::string(kind_name(analysis)) + ", " + file_of(analysis) + "\n";
    text += own_landmarks(analysis) + "\n";
    for (const ItemSummary& item : items_of(analysis)) text += shown(item);
    return text;
}

std::string shown(std::span<const Analysis> analyses) {
    constexpr int kind_width = 10, title_width = 40;
    std::string text = left_aligned("Kind", kind_width) + left_aligned("Analysis", title_width) + " Items  File\n";
    for (const Analysis& analysis : analyses) {
        text += left_aligned(kind_name(analysis), kind_width) +
                left_aligned(fitted(title_of(analysis), title_width), title_width) + " " +
                right_aligned(std::to_string(item_count(analysis)), 5) + "  " + file_of(analysis) + "\n";
        if (!comment_of(analysis).empty()) {
            const std::string indent(kind_width + 2, ' ');
            text += indent + wrapped(comment_of(analysis), page_width - kind_width - 2, indent) + "\n";
        }
    }
    return text;
}

Json json_of(const Norm& norm) {
    return {{"mean", norm.mean}, {"sd", norm.sd}};
}

Json json_of(const Analysis& analysis, bool with_items) {
    Json json = {{"title", title_of(analysis)},
                 {"kind", kind_name(analysis)},
                 {"file", file_of(analysis)},
                 {"comment", comment_of(analysis)},
                 {"item_count", item_count(analysis)}};
    if (const auto& ages = analysis.ages())
        json["ages"] = {{"from", ages->from}, {"to", ages->to ? Json(*ages->to) : Json(nullptr)}};
    if (!with_items) return json;
    const tool::Inputs& inputs = analysis.inputs();
    json["inputs"] = {{"sex", inputs.sex}, {"age", inputs.age}, {"dental_stage", inputs.dental_stage}};
    for (const std::string& name : inputs.landmarks) json["inputs"]["landmarks"].push_back(printable(name));
    json["items"] = Json::array();
    std::string group;
    for (const ItemSummary& item : items_of(analysis)) {
        if (item.heading) {
            group = item.name;
            continue;
        }
        Json& row = json["items"].emplace_back(Json{{"name", item.name},
                                                    {"formula", item.formula},
                                                    {"unit", item.unit},
                                                    {"male", json_of(item.male)},
                                                    {"female", json_of(item.female)}});
        if (!item.sign.empty()) row["sign"] = Texts(Language::english).part(item.sign);
        if (!group.empty()) row["group"] = group;
    }
    return json;
}

std::string as_json(std::span<const Analysis* const> analyses, bool with_items) {
    Json all = Json::array();
    for (const Analysis* analysis : analyses) all.push_back(json_of(*analysis, with_items));
    return Json({{"analyses", all}}).dump(2) + "\n";
}

}  // namespace

ExitCode run_analyses(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string name, folder, output;
    ResultFormat format{};
    CommandLine line(command, "cephtool analyses", "cephtool analyses --format json");
    line.add_argument("NAME", name, "title or file name of an analysis");
    line.add_analysis_folder(folder);
    line.add_format(format, output, {ResultFormat::table, ResultFormat::json});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    const Selection selection(folder, {}, streams);
    const std::vector<Analysis>& analyses = selection.listed();

    std::vector<const Analysis*> chosen;
    if (name.empty()) {
        for (const Analysis& analysis : analyses) chosen.push_back(&analysis);
    } else {
        chosen = named(analyses, name);
        if (chosen.empty()) throw unknown_analysis(analyses, name);
    }
    std::string text;
    if (format == ResultFormat::json) {
        text = as_json(chosen, !name.empty());
    } else if (name.empty()) {
        text = shown(analyses);
    } else {
        for (const Analysis* analysis : chosen) text += shown(*analysis);
    }
    write_result(text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
