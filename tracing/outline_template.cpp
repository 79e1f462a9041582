#include "tracing/outline_template.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/path.h"
#include "base/program_folder.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

Position position_of(const Json& pair) {
    return {pair.at(0).get<double>(), pair.at(1).get<double>()};
}

Tissue tissue_of(const std::string& name) {
    if (name == "soft") return Tissue::soft;
    return name == "tooth" ? Tissue::tooth : Tissue::hard;
}

TemplateCurve curve_of(const Json& json) {
    TemplateCurve curve;
    curve.outline.name = json.at("name").get<std::string>();
    curve.outline.closed = json.at("closed").get<bool>();
    curve.outline.anchors = json.at("anchors").get<std::vector<std::string>>();
    for (const Json& point : json.at("points")) curve.outline.points.push_back(position_of(point));
    curve.style = {tissue_of(json.at("tissue").get<std::string>()), json.value("fine", false)};
    curve.tooth = json.value("tooth", "");
    return curve;
}

bool passes_through_anchors(const TemplateCurve& curve, const OutlineTemplate& made) {
    return std::ranges::all_of(curve.outline.anchors, [&](const std::string& anchor) {
        const Position* at = made.find_landmark(anchor);
        return at &&
               std::ranges::any_of(curve.outline.points, [&](Position p) { return p.x == at->x && p.y == at->y; });
    });
}

std::filesystem::path shipped_folder() {
    return shared_folder() / "outlines";
}

}  // namespace

const Position* OutlineTemplate::find_landmark(const std::string& name) const {
    const auto found = std::ranges::find(landmarks, name, &Landmark::name);
    return found == landmarks.end() ? nullptr : &found->position;
}

OutlineStyle OutlineTemplate::style_of(const std::string& curve) const {
    for (const TemplateCurve& known : curves)
        if (known.outline.name == curve) return known.style;
    return {};
}

OutlineTemplate read_template(const Source& source) {
    const auto broken = [&] {
        return source.error("this is no file of outlines", "outlines/README.md says what belongs into it.");
    };
    OutlineTemplate made;
    try {
        const Json json = Json::parse(source.text);
        made.mm_per_pixel = json.at("mm_per_pixel").get<double>();
        for (const auto& [name, point] : json.at("landmarks").items()) {
            made.landmarks.push_back({name, position_of(point)});
        }
        for (const Json& curve : json.at("curves")) made.curves.push_back(curve_of(curve));
    } catch (const Json::exception&) {
        throw broken();
    }
    for (const TemplateCurve& curve : made.curves)
        if (curve.outline.points.size() < 3 || !passes_through_anchors(curve, made)) throw broken();
    return made;
}

OutlineTemplate shipped_template(Kind kind) {
    if (kind == Kind::model) return {};
    const std::string file = utf8_from_path(shipped_folder() / (std::string(name_of(kind)) + ".json"));
    std::istringstream no_input;
    return read_template(read_bytes(file, no_input));
}

}  // namespace cephtool
