// 3D Slicer's markups: JSON with lists of control points, of which those of type "Fiducial" are landmarks.
#include <nlohmann/json.hpp>

#include "base/json_tree.h"
#include "base/wording.h"
#include "cases/case_format.h"
#include "cases/case_names.h"
#include "cases/case_settings.h"
#include "cases/slicer_space.h"

namespace cephtool {
namespace {

constexpr const char* own_key = "x-cephtool";  // what this program adds: the settings of CSV, as texts
constexpr const char* schema =
    "https://raw.githubusercontent.com/slicer/slicer/master/Modules/Loadable/Markups/Resources/Schema/"
    "markups-schema-v1.0.3.json#";

const JsonValue* find(const JsonObject& members, std::string_view name) {
    for (const JsonMember& member : members)
        if (member.key == name) return &member.value;
    return nullptr;
}

class SlicerReader {
 public:
    SlicerReader(const Source& source, const CaseOptions& options)
        : source_(source), options_(options), builder_(source) {}

    Case read() {
        const JsonValue root = read_json(source_);
        const auto& members = as<JsonObject>(root, "the file", "an object in { }");
        if (const JsonValue* own = find(members, own_key)) read_own(*own);
        pass_over(members, {"@schema", own_key, "markups"});
        own_scale_ = builder_.scale();
        const JsonValue* lists = find(members, "markups");
        if (!lists) throw source_.error_at(root.at, "the key \"markups\" is missing", "Save the points from Slicer.");
        for (const JsonValue& list : as<JsonArray>(*lists, "\"markups\"", "a list in [ ]")) read_markup(list);
        if (points_.empty()) throw source_.error("it holds no placed point of a list of type \"Fiducial\"");
        builder_.scale(slicer_scale(own_scale_, options_.mm_per_pixel, space_).mm_per_pixel, 0);
        if (!own_scale_ && !options_.mm_per_pixel) builder_.remark(positions_in_mm());
        if (other_lists_) builder_.note("lines, curves and other markups than lists of points left out");
        add_points(builder_, points_, source_);
        return builder_.finished();
    }

 private:
    template <class Type>
    const Type& as(const JsonValue& value, const std::string& what, const char* type) const {
        if (const auto* wanted = std::get_if<Type>(&value.value)) return *wanted;
        throw source_.error_at(value.at, what + " should be " + type);
    }

    // The text of a member, `absent` without it.
    std::string text(const JsonObject& members, const std::string& key, const char* absent) const {
        const JsonValue* value = find(members, key);
        return value ? as<std::string>(*value, "\"" + key + "\"", "a text in quotes") : absent;
    }

    void pass_over(const JsonObject& members, std::initializer_list<std::string_view> known) {
        for (const JsonMember& member : members)
            if (std::ranges::find(known, member.key) == known.end())
                builder_.pass_over("the key " + in_quotes(member.key));
    }

    void read_own(const JsonValue& own) {
        for (const JsonMember& member : as<JsonObject>(own, std::string("\"") + own_key + "\"", "an object in { }")) {
            const std::string& value = as<std::string>(member.value, in_quotes(member.key), "a text in quotes");
            if (!read_setting(builder_, source_, member.key, trimmed(value), member.value.at)) {
                throw source_.error_at(member.key_at, "the setting " + in_quotes(member.key) + " is not known");
            }
        }
    }

    void read_markup(const JsonValue& list) {
        const auto& members = as<JsonObject>(list, "a markup", "an object in { }");
        if (text(members, "type", "Fiducial") != "Fiducial") {
            other_lists_ = true;
            return;
        }
        const std::string name = text(members, "coordinateSystem", "LPS");
        const auto space = slicer_space(name);
        if (!space || *space == SlicerSpace::ijk) {
            throw source_.error_at(list.at, in_quotes(name) + " is no coordinate system of markups", "Use LPS or RAS.");
        }
        space_ = *space;
        pass_over(members, {"type", "coordinateSystem", "coordinateUnits", "controlPoints"});
        const JsonValue* points = find(members, "controlPoints");
        if (!points) return;
        for (const JsonValue& point : as<JsonArray>(*points, "\"controlPoints\"", "a list in [ ]")) read_point(point);
    }

    void read_point(const JsonValue& value) {
        const auto& members = as<JsonObject>(value, "a control point", "an object in { }");
        if (text(members, "positionStatus", "defined") != "defined") return;
        pass_over(members, {"id", "label", "position", "positionStatus"});
        const JsonValue* position = find(members, "position");
        if (!position) throw source_.error_at(value.at, "a defined control point without \"position\"");
        const auto& coordinates = as<JsonArray>(*position, "\"position\"", "a list in [ ]");
        if (coordinates.size() != 3) throw source_.error_at(position->at, "a position has three coordinates");
        double xyz[3];
        for (std::size_t i = 0; i < 3; ++i) xyz[i] = as<double>(coordinates[i], "a coordinate", "a number");
        if (!points_.empty() && xyz[2] != z_) {
            throw source_.error_at(coordinates[2].at, "the points do not lie in one plane",
                                   "A film's points have one z; those of a volume can't be measured as a film.");
        }
        z_ = xyz[2];
        const JsonValue* label = find(members, "label");
        if (!label) throw source_.error_at(value.at, "a control point without \"label\"", "Label it: \"S\".");
        const SlicerScale scale = slicer_scale(own_scale_, options_.mm_per_pixel, space_);
        const Position on_film = film_position(xyz[0], xyz[1], space_, scale);
        points_.push_back({std::string(trimmed(as<std::string>(*label, "\"label\"", "a text in quotes"))),
                           {builder_.checked_coordinate(on_film.x, position->at),
                            builder_.checked_coordinate(on_film.y, position->at)},
                           label->at});
    }

    const Source& source_;
    const CaseOptions& options_;
    CaseBuilder builder_;
    std::optional<double> own_scale_;
    SlicerSpace space_ = SlicerSpace::lps;
    std::vector<NamedPoint> points_;
    double z_ = 0;
    bool other_lists_ = false;
};

}  // namespace

bool is_slicer(const Source& source) {
    if (lower_case(source.name).ends_with(".mrk.json")) return true;
    const std::size_t first = source.text.find_first_not_of(" \t\r\n");
    return first != std::string::npos && source.text[first] == '{' &&
           source.text.find("\"markups\"") != std::string::npos &&
           source.text.find("\"controlPoints\"") != std::string::npos &&
           source.text.find("\"cephtool-case\"") == std::string::npos;
}

std::vector<Case> read_slicer_cases(const Source& source, const CaseOptions& options) {
    std::vector<Case> cases;
    cases.push_back(SlicerReader(source, options).read());
    return cases;
}

std::string to_slicer(const Case& record, const CaseOptions&) {
    using Json = nlohmann::ordered_json;
    Json own = Json::object(), points = Json::array();
    for (const auto& [key, value] : settings_of(record)) own[key] = value;
    for (const Landmark& landmark : all_landmarks(record)) {
        const Position p = lps_position(landmark.position, record.mm_per_pixel.value());
        points.push_back({{"id", std::to_string(points.size() + 1)},
                          {"label", landmark.name},
                          {"position", Json::array({p.x, p.y, 0.0})},
                          {"positionStatus", "defined"}});
    }
    const Json list = {
        {"type", "Fiducial"}, {"coordinateSystem", "LPS"}, {"coordinateUnits", "mm"}, {"controlPoints", points}};
    return Json({{"@schema", schema}, {own_key, own}, {"markups", Json::array({list})}}).dump(2) + "\n";
}

}  // namespace cephtool
