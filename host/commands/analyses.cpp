// cephtool analyses: what there is to measure with.
#include <CodePage.h>

#include <nlohmann/json.hpp>
#include <ostream>

#include "base/columns.h"
#include "base/wording.h"
#include "cases/case_record.h"
#include "host/command_line.h"
#include "host/output.h"
#include "host/profile.h"
#include "results/catalogue.h"
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

std::string norm_text(const AnalysisSheet& sheet, int index, const SheetItem& item, SheetPart part,
                      const SheetSubject& nobody) {
    if (!sheet.Missing(index, part, nobody).IsEmpty()) return "formula";
    constexpr double unused_scale = 1;
    return text_of(sheet.Get_MeanSD(item.name, part == SheetPart::sd, nobody, unused_scale, 1));
}

std::vector<ItemSummary> items_of(const Analysis& analysis) {
    Case blank;
    blank.kind = case_kind(analysis);
    blank.mm_per_pixel = 1;
    CaseRecord fields(blank);
    std::vector<ItemSummary> items;
    for (int index = 0; index < analysis.sheet.GetCount(); ++index) {
        const SheetItem item = analysis.sheet.GetItem(index);
        if (item.heading) {
            items.push_back({true, text_of(item.name), "", "", "", {}, {}});
            continue;
        }
        const auto norm = [&](Sex sex) {
            const SheetSubject nobody = fields.subject(static_cast<int>(sex), 0);
            return Norm{norm_text(analysis.sheet, index, item, SheetPart::mean, nobody),
                        norm_text(analysis.sheet, index, item, SheetPart::sd, nobody)};
        };
        items.push_back({false, text_of(item.name), text_of(item.expression), text_of(item.unit), text_of(item.sign),
                         norm(Sex::male), norm(Sex::female)});
    }
    return items;
}

int item_count(const Analysis& analysis) {
    int count = 0;
    for (int index = 0; index < analysis.sheet.GetCount(); ++index) count += !analysis.sheet.GetItem(index).heading;
    return count;
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

std::string shown(const SheetAges& ages) {
    if (!ages.known) return "";
    const std::string from = std::to_string(ages.from);
    return "Norms of people of " +
           (ages.to < 0 ? from + " years and older" : from + " to " + std::to_string(ages.to) + " years") + "\n";
}

std::string shown(const Analysis& analysis) {
    std::string text = analysis.title + "\n";
    if (!analysis.comment.empty()) text += wrapped(analysis.comment, page_width, "") + "\n";
    text += shown(analysis.sheet.Ages());
    text += std::string(name_of_engine_kind(analysis.engine_kind)) + ", " + analysis.file + "\n\n";
    for (const ItemSummary& item : items_of(analysis)) text += shown(item);
    return text;
}

std::string shown(std::span<const Analysis> analyses) {
    constexpr int kind_width = 10, title_width = 40;
    std::string text = left_aligned("Kind", kind_width) + left_aligned("Analysis", title_width) + " Items  File\n";
    for (const Analysis& analysis : analyses) {
        text += left_aligned(name_of_engine_kind(analysis.engine_kind), kind_width) +
                left_aligned(fitted(analysis.title, title_width), title_width) + " " +
                right_aligned(std::to_string(item_count(analysis)), 5) + "  " + analysis.file + "\n";
        if (!analysis.comment.empty()) {
            const std::string indent(kind_width + 2, ' ');
            text += indent + wrapped(analysis.comment, page_width - kind_width - 2, indent) + "\n";
        }
    }
    return text;
}

Json json_of(const Norm& norm) {
    return {{"mean", norm.mean}, {"sd", norm.sd}};
}

Json json_of(const Analysis& analysis, bool with_items) {
    Json json = {{"title", analysis.title},
                 {"kind", name_of_engine_kind(analysis.engine_kind)},
                 {"file", analysis.file},
                 {"comment", analysis.comment},
                 {"item_count", item_count(analysis)}};
    const SheetAges ages = analysis.sheet.Ages();
    if (ages.known) json["ages"] = {{"from", ages.from}, {"to", ages.to < 0 ? Json(nullptr) : Json(ages.to)}};
    if (!with_items) return json;
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
    std::string name, folder, format, output;
    CommandLine line(command, "cephtool analyses", "cephtool analyses --format json");
    line.add_argument("NAME", name, "title or file name of an analysis");
    line.add_analysis_folder(folder);
    line.add_format(format, output, {"table", "json"});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    const ProgramProfile profile(folder);
    std::vector<std::string> notes;
    const std::vector<Analysis> analyses = listed_analyses(notes);
    for (const std::string& note : notes) streams.err << "note: " << note << "\n";

    std::vector<const Analysis*> chosen;
    if (name.empty()) {
        for (const Analysis& analysis : analyses) chosen.push_back(&analysis);
    } else {
        chosen = named(analyses, name);
        if (chosen.empty()) throw unknown_analysis(analyses, name);
    }
    std::string text;
    if (format == "json") {
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
