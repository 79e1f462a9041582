#include <nlohmann/json.hpp>

#include "base/wording.h"
#include "cases/case_facts.h"
#include "results/names.h"
#include "results/results.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

Json json_of(const std::optional<double>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json json_of_error(const Measurement& item, const Texts& texts) {
    const tool::ValueError& error = *item.error;
    std::vector<std::string> words;
    for (const Remark& remark : item.error_remarks()) words.push_back(texts(remark));
    if (error.state != ErrorState::known)
        return {{"value", nullptr}, {"without", error.without}, {"text", joined(words, "; ")}};
    return {{"value", error.value},       {"deviation", json_of(error.deviation)},
            {"mostly", error.mostly},     {"share", error.share},
            {"assumed", error.assumed},   {"covers_mean", item.deviation && error.covers(*item.deviation)},
            {"text", joined(words, "; ")}};
}

Json json_of(std::span<const Remark> remarks, const Texts& texts) {
    Json json = Json::array();
    for (const Remark& remark : remarks) json.push_back({{"code", remark.code}, {"text", texts(remark)}});
    return json;
}

Json json_of(const Measurement& item, const Texts& texts) {
    Json json = {{"name", item.name},
                 {"label", label_of(item, texts)},
                 {"value", json_of(item.value)},
                 {"unit", item.unit},
                 {"mean", json_of(item.mean)},
                 {"sd", json_of(item.sd)},
                 {"deviation", json_of(item.deviation)},
                 {"missing", item.missing}};
    if (!item.sign.empty()) json["sign"] = texts.part(item.sign);
    if (!item.text.empty()) {
        json["text"] = item.text;
        json["text_label"] = verdict_of(item, texts);
    }
    if (!item.unverified.empty()) json["unverified"] = texts.part(item.unverified);
    if (!item.norm_missing.empty()) json["norm_missing"] = item.norm_missing;
    if (!item.reason.text.empty()) json["reason"] = texts(item.reason);
    if (item.error) json["error"] = json_of_error(item, texts);
    if (!item.remarks.empty()) json["remarks"] = json_of(item.remarks, texts);
    return json;
}

Json json_of(const AnalysisResult& result, const Texts& texts) {
    Json items = Json::array();
    std::string group, group_label;
    for (const Measurement& item : result.items) {
        if (item.heading) {
            group = item.name;
            group_label = label_of(item, texts);
            continue;
        }
        Json& json = items.emplace_back(json_of(item, texts));
        if (group.empty()) continue;
        json["group"] = group;
        json["group_label"] = group_label;
    }
    const auto& population = result.band.population;
    return {{"title", title_of(*result.analysis)},
            {"label", title_of(*result.analysis, texts)},
            {"file", file_of(*result.analysis)},
            {"kind", kind_name(*result.analysis)},
            {"comment", comment_of(*result.analysis)},
            {"band", result.band.code == NormBand::unknown ? Json(nullptr) : Json(result.band.code)},
            {"norms", result.band.words},
            {"population", population ? Json(printable(population->name)) : Json(nullptr)},
            {"population_label", population ? Json(in_words(*population, texts)) : Json(nullptr)},
            {"remarks", json_of(result.remarks(), texts)},
            {"items", items}};
}

Json json_of(const CaseResult& result, const Texts& texts) {
    Json json = case_facts(result.record);
    json["remarks"] = json_of(result.record.remarks, texts);
    json["analyses"] = Json::array();
    for (const AnalysisResult& analysis : result.analyses) json["analyses"].push_back(json_of(analysis, texts));
    json["left_out"] = Json::array();
    for (const LeftOut& each : result.left_out) {
        json["left_out"].push_back({{"title", title_of(*each.analysis)},
                                    {"file", file_of(*each.analysis)},
                                    {"items", each.items},
                                    {"missing", each.missing},
                                    {"text", each.in_words(texts)}});
    }
    return json;
}

}  // namespace

std::string results_json(std::span<const CaseResult> results, const Texts& texts) {
    Json cases = Json::array();
    for (const CaseResult& result : results) cases.push_back(json_of(result, texts));
    const Json document = {{"format", "cephtool-report"}, {"version", 1}, {"cases", cases}};
    // A file's name may hold any bytes.
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace cephtool
