// What goes to JavaScript and comes from there, as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/remark.h"
#include "cases/case_format.h"
#include "results/texts.h"

namespace engine {

using Json = nlohmann::ordered_json;

// What a file's name or a definition holds may be any bytes.
inline std::string text_of(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

inline Json json_of(const std::optional<double>& number) {
    return number ? Json(*number) : Json(nullptr);
}

inline Json json_of(const cephtool::Position& point) {
    return {{"x", point.x}, {"y", point.y}};
}

inline Json json_of(const std::optional<cephtool::Position>& point) {
    return point ? json_of(*point) : Json();
}

inline Json json_of(const cephtool::Case& record) {
    return Json::parse(cephtool::to_json(record));
}

inline Json json_of(const std::string& name, const cephtool::Position& point) {
    return {{"name", name}, {"x", point.x}, {"y", point.y}};
}

template <class Remarks>
Json json_of(const Remarks& remarks, const cephtool::Texts& texts) {
    Json list = Json::array();
    for (const cephtool::Remark& remark : remarks) list.push_back({{"code", remark.code}, {"text", texts(remark)}});
    return list;
}

inline cephtool::Texts texts_in(const std::string& language) {
    return cephtool::Texts(language == "ja" ? cephtool::Language::japanese : cephtool::Language::english);
}

}  // namespace engine
