#include <nlohmann/json.hpp>

#include "base/wording.h"
#include "cases/case_facts.h"
#include "results/results.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

Json json_of(const std::optional<double>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json json_of_error(const Measurement& item) {
    const tool::ValueError& error = *item.error;
    std::vector<std::string> words;
    for (const Remark& remark : item.error_remarks()) words.push_back(in_english(remark));
    if (error.state != ErrorState::known)
        return {{"value", nullptr}, {"without", error.without}, {"text", joined(words, "; ")}};
    return {{"value", error.value},
            {"deviation", json_of(error.deviation)},
            {"mostly", error.mostly},
            {"share", error.share},
            {"covers_mean", item.deviation && error.covers(*item.deviation)},
            {"text", joined(words, "; ")}};
}

Json json_of(const Measurement& item) {
    Json json = {{"name", item.name},          {"value", json_of(item.value)}, {"unit", item.unit},
                 {"mean", json_of(item.mean)}, {"sd", json_of(item.sd)},       {"deviation", json_of(item.deviation)},
                 {"missing", item.missing}};
    if (!item.sign.empty()) json["sign"] = Texts(Language::english).part(item.sign);
    if (!item.text.empty()) json["text"] = item.text;
    if (!item.norm_missing.empty()) json["norm_missing"] = item.norm_missing;
    if (!item.reason.text.empty()) json["reason"] = in_english(item.reason);
    if (item.error) json["error"] = json_of_error(item);
    if (!item.remarks.empty()) json["remarks"] = json_of(item.remarks);
    return json;
}

Json json_of(const AnalysisResult& result) {
    Json items = Json::array();
    std::string group;
    for (const Measurement& item : result.items) {
        if (item.heading) {
            group = item.name;
            continue;
        }
        Json& json = items.emplace_back(json_of(item));
        if (!group.empty()) json["group"] = group;
    }
    return {{"title", title_of(*result.analysis)},
            {"file", file_of(*result.analysis)},
            {"kind", kind_name(*result.analysis)},
            {"comment", comment_of(*result.analysis)},
            {"band", result.band.code == NormBand::unknown ? Json(nullptr) : Json(result.band.code)},
            {"norms", result.band.words},
            {"remarks", json_of(result.remarks())},
            {"items", items}};
}

Json json_of(const CaseResult& result) {
    Json json = case_facts(result.record);
    json["analyses"] = Json::array();
    for (const AnalysisResult& analysis : result.analyses) json["analyses"].push_back(json_of(analysis));
    json["left_out"] = Json::array();
    for (const LeftOut& each : result.left_out) {
        json["left_out"].push_back({{"title", title_of(*each.analysis)},
                                    {"file", file_of(*each.analysis)},
                                    {"items", each.items},
                                    {"missing", each.missing},
                                    {"text", each.in_words(Texts(Language::english))}});
    }
    return json;
}

}  // namespace

std::string results_json(std::span<const CaseResult> results) {
    Json cases = Json::array();
    for (const CaseResult& result : results) cases.push_back(json_of(result));
    const Json document = {{"format", "cephtool-report"}, {"version", 1}, {"cases", cases}};
    // A file's name may hold any bytes.
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace cephtool
