#include "web/engine/arguments.h"

#include "base/error.h"

namespace engine {

cephtool::Case case_of(const std::string& json) {
    return cephtool::read_json_case({"the case", json});
}

std::vector<cephtool::Case> cases_of(const std::string& json) {
    std::vector<cephtool::Case> cases;
    for (const Json& record : Json::parse(json)) cases.push_back(case_of(record.dump()));
    return cases;
}

cephtool::Kind kind_of(const std::string& name) {
    for (const cephtool::Kind kind : cephtool::all_kinds)
        if (name == cephtool::name_of(kind)) return kind;
    throw cephtool::Error(cephtool::ExitCode::bad_input, "there is no kind of case of this name: " + name);
}

std::vector<int> numbers_of(const std::string& json) {
    return Json::parse(json).get<std::vector<int>>();
}

std::vector<const cephtool::Analysis*> analyses_in(const std::string& json) {
    return analyses_numbered(numbers_of(json));
}

std::optional<cephtool::Film> film_of(const emscripten::val& film) {
    if (film.isUndefined() || film.isNull()) return {};
    cephtool::Film picture;
    picture.picture.width = film["width"].as<int>();
    picture.picture.height = film["height"].as<int>();
    picture.file = film["bytes"].as<std::string>();
    return picture;
}

TracingWish wish_of(const std::string& json) {
    const Json given = Json::parse(json);
    TracingWish wish;
    wish.no_mode = given.contains("mode") && given["mode"].is_null();
    if (given.contains("mode") && !wish.no_mode) wish.mode = given["mode"].get<int>();
    if (given.contains("folder")) wish.folder = given["folder"].get<int>();
    const std::string outlines = given.value("outlines", "case");
    wish.outlines = outlines == "fitted" ? cephtool::OutlineSource::fitted
                    : outlines == "none" ? cephtool::OutlineSource::none
                                         : cephtool::OutlineSource::own_or_fitted;
    return wish;
}

}  // namespace engine
