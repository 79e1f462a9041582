#include "results/growth_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/csv.h"
#include "base/numbers.h"
#include "base/paint.h"
#include "base/wording.h"
#include "cases/case_facts.h"
#include "cases/vertebrae.h"
#include "results/case_heading.h"
#include "results/names.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int what_width = 34, number_width = 7;
constexpr int text_column = what_width + 1 + number_width + 2;
constexpr int indent_width = 4;

constexpr int grown_up = 18;

std::string number_text(const Finding& finding) {
    if (finding.stage) return std::to_string(*finding.stage);
    return finding.years ? with_decimals(*finding.years, 2) : "–";
}

std::string grounds_text(const Finding& finding, const char* between, const Texts& texts) {
    std::vector<std::string> grounds;
    for (const Ground& ground : finding.grounds) grounds.push_back(texts(ground.name) + " " + texts(ground.text));
    return joined(grounds, between);
}

// A line of its own, below the finding's.
std::string below(const std::string& text) {
    const std::string indent(indent_width, ' ');
    return indent + wrapped(text, page_width - indent_width, indent) + "\n";
}

std::string shown(const Finding& finding, const Texts& texts) {
    const bool english = texts.language() == Language::english;
    const std::string words = finding.years   ? texts("years")
                              : finding.stage ? stage_of(finding, texts)
                                              : texts(english ? "not given" : "not known");
    std::string text = left_aligned(fitted(what_of(finding, texts), what_width), what_width) + " " +
                       right_aligned(number_text(finding), number_width) + "  " +
                       fitted(words, page_width - text_column) + "\n";
    if (!finding.grounds.empty()) text += below(texts("from %1", grounds_text(finding, ", ", texts)));
    if (!finding.missing.empty()) {
        const std::string missing = joined(finding.missing, ", ");
        text += below(english ? "missing: " + missing : texts("not known") + "：" + missing);
    }
    if (!finding.has_result() && !finding.reason.empty()) text += below(texts(finding.reason));
    return text;
}

struct Advice {
    const char* missing;
    const char* way;
};

constexpr Advice advice_table[] = {
    {"sex", "--sex m or --sex f, or \"sex\": \"female\" in the case"},
    {"birth", "\"birth\": \"2012-03-31\"; in a CSV # birth=2012-03-31"},
    {"film", "the day of the film: \"film\": \"2025-06-02\"; in a CSV # film=2025-06-02"},
    {"dental_stage", "\"dental_stage\": \"IIIA\"; in a CSV # dental_stage=IIIA"},
};

// What is missing anywhere, once each, and how it is given.
std::string advice(const std::vector<Finding>& findings, const Texts& texts) {
    constexpr int name_width = 16;
    std::vector<std::string> missing;
    for (const Finding& finding : findings)
        missing.insert(missing.end(), finding.missing.begin(), finding.missing.end());
    const auto is_missing = [&](const std::string& name) { return std::ranges::find(missing, name) != missing.end(); };
    std::string text;
    const auto add = [&](const std::string& name, const std::string& way) {
        text += "  " + left_aligned(name, name_width) +
                wrapped(way, page_width - name_width - 2, std::string(name_width + 2, ' ')) + "\n";
    };
    for (const Advice& row : advice_table)
        if (is_missing(row.missing)) add(row.missing, texts(row.way));
    if (std::ranges::any_of(vertebra_point_names(), is_missing)) {
        add("C3.., C4..", texts("points of the vertebrae: docs/case_format.md, \"Vertebrae\", shows where they lie"));
    }
    return text.empty() ? "" : "\n" + texts("What is missing is given so:") + "\n" + text;
}

// Growth and stages in one list.
std::vector<Finding> all_findings(const GrowthResult& result) {
    std::vector<Finding> all = result.growth;
    all.insert(all.end(), result.stages.begin(), result.stages.end());
    return all;
}

bool has_bone_age_of_an_adult(const GrowthResult& result) {
    const auto years = [&](const char* what) {
        const auto found = std::ranges::find(result.growth, what, &Finding::what);
        return found == result.growth.end() ? std::nullopt : found->years;
    };
    return years("Bone age") && years("Age") >= grown_up;
}

template <class Number>
Json json_of(const std::optional<Number>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json json_of(const Finding& finding, const Texts& texts) {
    Json from = Json::object();
    for (const Ground& ground : finding.grounds) {
        from[ground.name] = ground.number ? json_of(ground.number) : Json(ground.text);
    }
    Json json = {{"what", finding.what},
                 {"label", what_of(finding, texts)},
                 {"stage", json_of(finding.stage)},
                 {"name", finding.stage ? Json(finding.name) : Json(nullptr)},
                 {"name_label", finding.stage ? Json(stage_of(finding, texts)) : Json(nullptr)},
                 {"years", json_of(finding.years)},
                 {"from", from},
                 {"missing", finding.missing}};
    if (!finding.has_result() && !finding.reason.empty()) json["reason"] = texts(finding.reason);
    return json;
}

Json json_of(const std::vector<Finding>& findings, const Texts& texts) {
    Json list = Json::array();
    for (const Finding& finding : findings) list.push_back(json_of(finding, texts));
    return list;
}

}  // namespace

std::string growth_table(const GrowthResult& result, bool colour, const Texts& texts) {
    const auto heading = [&](const char* words) { return "\n" + painted(texts(words), bold, colour) + "\n"; };
    std::string text = case_heading(result.record, colour, texts) + heading("Growth");
    for (const Finding& finding : result.growth) text += shown(finding, texts);
    if (!result.stages.empty()) text += heading("Stages of the analyses");
    for (const Finding& finding : result.stages) text += shown(finding, texts);
    if (has_bone_age_of_an_adult(result))
        text += "\n" + texts("The bone age formula was made from children: in the grown-up it says nothing.") + "\n";
    return text + advice(all_findings(result), texts);
}

std::string growth_json(std::span<const GrowthResult> results, const Texts& texts) {
    Json cases = Json::array();
    for (const GrowthResult& result : results) {
        Json json = case_facts(result.record);
        json["growth"] = json_of(result.growth, texts);
        json["stages"] = json_of(result.stages, texts);
        cases.push_back(json);
    }
    const Json document = {{"format", "cephtool-stages"}, {"version", 1}, {"cases", cases}};
    // A file's name may hold any bytes.
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string growth_csv(std::span<const GrowthResult> results, const Texts& texts) {
    const Texts english(Language::english);  // in columns that programs read
    std::string text = "case,what,stage,name,years,from,missing,remarks,label,name_label\r\n";
    for (const GrowthResult& result : results) {
        for (const Finding& finding : all_findings(result)) {
            text += csv_field(printable(result.record.file)) + "," + csv_field(finding.what) + "," +
                    (finding.stage ? std::to_string(*finding.stage) + "," + csv_field(finding.name) : ",") + "," +
                    (finding.years ? shortest(*finding.years) : "") + "," +
                    csv_field(grounds_text(finding, "; ", english)) + "," + csv_field(joined(finding.missing, " ")) +
                    "," + codes_of(result.record.remarks) + "," + csv_field(what_of(finding, texts)) + "," +
                    csv_field(finding.stage ? stage_of(finding, texts) : "") + "\r\n";
        }
    }
    return text;
}

}  // namespace cephtool
