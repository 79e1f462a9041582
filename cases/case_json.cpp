// The project's own format: docs/case_format.md.
#include <nlohmann/json.hpp>
#include <span>

#include "base/json_tree.h"
#include "base/suggestion.h"
#include "base/wording.h"
#include "cases/case_builder.h"

namespace cephtool {
namespace {

constexpr std::string_view format_name = "cephtool-case";
constexpr double format_version = 1;

bool is_foreign(const std::string& key) {
    return key.starts_with("x-");
}

// What a value is called in a message.
template <class Type>
constexpr const char* type_name = nullptr;
template <>
constexpr const char* type_name<bool> = "true or false";
template <>
constexpr const char* type_name<double> = "a number";
template <>
constexpr const char* type_name<std::string> = "a text in quotes";
template <>
constexpr const char* type_name<JsonArray> = "a list in [ ]";
template <>
constexpr const char* type_name<JsonObject> = "an object in { }";

class JsonCaseReader {
 public:
    explicit JsonCaseReader(const Source& source) : source_(source), builder_(source) {}

    Case read() {
        const JsonValue root = read_json(source_);
        const JsonObject& members = as<JsonObject>(root, "a case");
        check_format(members, root.at);
        check_keys(members, key_names());  // first, so that a slip is not reported as the lack of a key
        // Landmarks are judged by the kind's table, and outlines by the landmarks, whatever the order in the file.
        builder_.kind(as<std::string>(required(members, "kind", root.at), "\"kind\""),
                      required(members, "kind", root.at).at);
        required(members, "landmarks", root.at);
        for (const Key& key : keys()) {
            if (const JsonValue* value = find(members, key.name); value && key.read) (this->*key.read)(*value);
        }
        for (ForeignKey& key : foreign_keys(members)) builder_.foreign(std::move(key));
        return builder_.finished();
    }

 private:
    struct Key {
        const char* name;
        void (JsonCaseReader::*read)(const JsonValue&);
    };
    static std::span<const Key> keys();

    static std::vector<std::string> key_names() {
        std::vector<std::string> names;
        for (const Key& key : keys()) names.emplace_back(key.name);
        return names;
    }

    static const JsonValue* find(const JsonObject& members, std::string_view name) {
        for (const JsonMember& member : members)
            if (member.key == name) return &member.value;
        return nullptr;
    }

    const JsonValue& required(const JsonObject& members, const std::string& name, std::size_t at) const {
        if (const JsonValue* value = find(members, name)) return *value;
        throw source_.error_at(at, "the key \"" + name + "\" is missing", "docs/case_format.md shows a whole case.");
    }

    template <class Type>
    const Type& as(const JsonValue& value, const std::string& what) const {
        if (const auto* wanted = std::get_if<Type>(&value.value)) return *wanted;
        throw source_.error_at(value.at, what + " should be " + type_name<Type>);
    }

    // Keys that begin with "x-" belong to other programs.
    std::vector<ForeignKey> foreign_keys(const JsonObject& members) const {
        std::vector<ForeignKey> keys;
        for (const auto& [key, at, value] : members)
            if (is_foreign(key)) keys.push_back({key, source_.text.substr(value.at, value.end - value.at)});
        return keys;
    }

    void check_keys(const JsonObject& members, std::span<const std::string> known) const {
        for (const JsonMember& member : members) {
            if (is_foreign(member.key) || std::ranges::find(known, member.key) != known.end()) continue;
            const std::string meant = did_you_mean(member.key, known);
            throw source_.error_at(member.key_at, "the key " + in_quotes(member.key) + " is not known here",
                                   meant.empty() ? "Keys of your own begin with \"x-\"." : meant);
        }
    }

    void check_format(const JsonObject& members, std::size_t at) const {
        const JsonValue& format = required(members, "format", at);
        if (as<std::string>(format, "\"format\"") != format_name) {
            throw source_.error_at(format.at, "this is another format than \"cephtool-case\"",
                                   "docs/case_format.md shows how a case is written.");
        }
        const JsonValue& version = required(members, "version", at);
        if (as<double>(version, "\"version\"") != format_version) {
            throw source_.error_at(version.at, "this program reads version 1 of the format",
                                   "Use a newer cephtool, or save the case as version 1.");
        }
    }

    Position position(const JsonValue& value, const std::string& what) const {
        const JsonArray& pair = as<JsonArray>(value, what);
        if (pair.size() != 2) {
            throw source_.error_at(value.at, what + " holds " + std::to_string(pair.size()) + " numbers",
                                   "A point is [x, y] in pixels.");
        }
        return {coordinate(pair[0]), coordinate(pair[1])};
    }

    double coordinate(const JsonValue& value) const {
        return builder_.checked_coordinate(as<double>(value, "a coordinate"), value.at);
    }

    void read_name(const JsonValue& value) { builder_.name(as<std::string>(value, "\"name\""), value.at); }
    void read_sex(const JsonValue& value) { builder_.sex(as<std::string>(value, "\"sex\""), value.at); }
    void read_birth(const JsonValue& value) { builder_.birth(as<std::string>(value, "\"birth\""), value.at); }
    void read_film(const JsonValue& value) { builder_.film(as<std::string>(value, "\"film\""), value.at); }
    void read_side(const JsonValue& value) { builder_.side(as<std::string>(value, "\"side\""), value.at); }
    void read_dental_stage(const JsonValue& value) {
        builder_.dental_stage(as<std::string>(value, "\"dental_stage\""), value.at);
    }
    void read_population(const JsonValue& value) {
        builder_.population(as<std::string>(value, "\"population\""), value.at);
    }
    void read_scale(const JsonValue& value) { builder_.scale(as<double>(value, "\"mm_per_pixel\""), value.at); }
    void read_image(const JsonValue& value) { builder_.image(as<std::string>(value, "\"image\""), value.at); }
    void read_palate(const JsonValue& value) { builder_.palate(as<double>(value, "\"palate\""), value.at); }

    void read_landmarks(const JsonValue& value) {
        for (const JsonMember& member : as<JsonObject>(value, "\"landmarks\"")) {
            builder_.landmark(member.key, position(member.value, "landmark " + in_quotes(member.key)), member.key_at);
        }
    }

    void read_user(const JsonValue& value) {
        for (const JsonMember& member : as<JsonObject>(value, "\"user\"")) {
            builder_.user_landmark(member.key, position(member.value, "landmark " + in_quotes(member.key)),
                                   member.key_at);
        }
    }

    void read_vertebrae(const JsonValue& value) {
        for (const JsonMember& member : as<JsonObject>(value, "\"vertebrae\"")) {
            builder_.vertebra_point(member.key, position(member.value, "point " + in_quotes(member.key)),
                                    member.key_at);
        }
    }

    void read_virtual(const JsonValue& value) {
        for (const JsonMember& member : as<JsonObject>(value, "\"virtual\"")) {
            builder_.virtual_landmark(member.key, as<std::string>(member.value, "a construction"), member.key_at);
        }
    }

    void read_outlines(const JsonValue& value) {
        for (const JsonValue& outline : as<JsonArray>(value, "\"outlines\"")) read_outline(outline);
    }

    void read_outline(const JsonValue& value) {
        static const std::vector<std::string> known = {"name", "closed", "points", "anchors"};
        const JsonObject& members = as<JsonObject>(value, "an outline");
        check_keys(members, known);
        Outline outline;
        const JsonValue& name = required(members, "name", value.at);
        outline.name = as<std::string>(name, "an outline's name");
        if (has_control_character(outline.name)) {
            throw source_.error_at(name.at, "a control character in an outline's name");
        }
        if (const JsonValue* closed = find(members, "closed")) outline.closed = as<bool>(*closed, "\"closed\"");
        for (const JsonValue& point : as<JsonArray>(required(members, "points", value.at), "\"points\"")) {
            outline.points.push_back(position(point, "a point of an outline"));
        }
        if (const JsonValue* anchors = find(members, "anchors")) {
            for (const JsonValue& anchor : as<JsonArray>(*anchors, "\"anchors\"")) {
                const std::string& landmark = as<std::string>(anchor, "an anchor");
                if (!builder_.knows(landmark)) {
                    throw source_.error_at(anchor.at,
                                           "the anchor " + in_quotes(landmark) + " is no landmark of this case",
                                           did_you_mean(landmark, landmark_names(builder_.kind())));
                }
                outline.anchors.push_back(landmark);
            }
        }
        outline.foreign = foreign_keys(members);
        builder_.outline(std::move(outline));
    }

    const Source& source_;
    CaseBuilder builder_;
};

// In the order in which they are read; what has no reader is read in front of all others.
std::span<const JsonCaseReader::Key> JsonCaseReader::keys() {
    static constexpr Key table[] = {
        {"format", nullptr},
        {"version", nullptr},
        {"kind", nullptr},
        {"name", &JsonCaseReader::read_name},
        {"sex", &JsonCaseReader::read_sex},
        {"birth", &JsonCaseReader::read_birth},
        {"film", &JsonCaseReader::read_film},
        {"side", &JsonCaseReader::read_side},
        {"dental_stage", &JsonCaseReader::read_dental_stage},
        {"population", &JsonCaseReader::read_population},
        {"mm_per_pixel", &JsonCaseReader::read_scale},
        {"image", &JsonCaseReader::read_image},
        {"palate", &JsonCaseReader::read_palate},
        {"landmarks", &JsonCaseReader::read_landmarks},
        {"user", &JsonCaseReader::read_user},
        {"vertebrae", &JsonCaseReader::read_vertebrae},
        {"virtual", &JsonCaseReader::read_virtual},
        {"outlines", &JsonCaseReader::read_outlines},
    };
    return table;
}

using Json = nlohmann::ordered_json;

Json json_of(Position position) {
    return Json::array({position.x, position.y});
}

Json json_of(const std::vector<Landmark>& landmarks) {
    Json object = Json::object();
    for (const Landmark& landmark : landmarks) object[landmark.name] = json_of(landmark.position);
    return object;
}

// The text of an object whose lines begin at `indent`; behind its own members stand some that are text already.
std::string object_text(const Json& own, std::span<const ForeignKey> more, const std::string& indent) {
    std::string text;
    for (const char c : own.dump(2)) text += c == '\n' ? "\n" + indent : std::string(1, c);
    const std::string end = "\n" + indent + "}";
    text.resize(text.size() - end.size());
    for (const auto& [key, json] : more) text += ",\n" + indent + "  " + Json(key).dump() + ": " + json;
    return text + end;
}

std::string text_of(const std::vector<Outline>& outlines) {
    std::string text;
    for (const Outline& outline : outlines) {
        Json points = Json::array();
        for (const Position& point : outline.points) points.push_back(json_of(point));
        const Json own = {
            {"name", outline.name}, {"closed", outline.closed}, {"points", points}, {"anchors", outline.anchors}};
        text += (text.empty() ? "[\n    " : ",\n    ") + object_text(own, outline.foreign, "    ");
    }
    return text + "\n  ]";
}

}  // namespace

Case read_json_case(const Source& source) {
    return JsonCaseReader(source).read();
}

std::string to_json(const Case& record) {
    Json json = {{"format", format_name}, {"version", 1}};
    if (!record.name.empty()) json["name"] = record.name;
    json["kind"] = name_of(record.kind);
    if (record.sex) json["sex"] = name_of(*record.sex);
    if (record.birth) json["birth"] = text_of(*record.birth);
    if (record.film) json["film"] = text_of(*record.film);
    if (record.side) json["side"] = name_of(*record.side);
    if (!record.dental_stage.empty()) json["dental_stage"] = record.dental_stage;
    if (!record.population.empty()) json["population"] = record.population;
    if (!record.image.empty()) json["image"] = record.image;
    if (record.mm_per_pixel) json["mm_per_pixel"] = *record.mm_per_pixel;
    json["landmarks"] = json_of(record.landmarks);
    if (!record.user.empty()) json["user"] = json_of(record.user);
    if (!record.vertebrae.empty()) json["vertebrae"] = json_of(record.vertebrae);
    for (const VirtualLandmark& made : record.virtuals) json["virtual"][made.name] = made.construction;
    if (record.palate) json["palate"] = *record.palate;
    std::vector<ForeignKey> more;
    if (!record.outlines.empty()) more.push_back({"outlines", text_of(record.outlines)});
    more.insert(more.end(), record.foreign.begin(), record.foreign.end());
    return object_text(json, more, "") + "\n";
}

}  // namespace cephtool
