#include "cases/case_names.h"

#include <algorithm>

#include "base/suggestion.h"
#include "base/wording.h"
#include "cases/vertebrae.h"

namespace cephtool {
namespace {

bool holds(const std::vector<std::string>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

bool is_auxiliary(const std::string& name) {
    return name.size() == 5 && name.starts_with("aux") && name.find_first_not_of("0123456789", 3) == std::string::npos;
}

// Films of other kinds may have landmarks of one's own under the names of vertebra points.
std::vector<std::string> vertebra_names(Kind kind) {
    return kind == Kind::lateral ? vertebra_point_names() : std::vector<std::string>();
}

void add_own(CaseBuilder& builder, const NamedPoint& point, std::vector<std::string> known, const Source& source) {
    const std::string meant = did_you_mean(point.name, known);
    if (!fits_user_landmark(point.name)) {
        throw source.error_at(point.at,
                              in_quotes(point.name) + " is no landmark of a " + name_of(builder.kind()) + " case",
                              (meant.empty() ? "" : meant + " ") + "Names of your own have up to five bytes.");
    }
    builder.user_landmark(point.name, point.position, point.at);
    builder.note(in_quotes(point.name) + " is kept as a landmark of your own" + (meant.empty() ? "" : ". " + meant));
}

}  // namespace

Kind kind_of(std::span<const NamedPoint> points, const Source& source) {
    Kind best = Kind::lateral;
    std::ptrdiff_t most = 0;
    for (const Kind kind : all_kinds) {
        const std::vector<std::string> names = landmark_names(kind);
        const auto count =
            std::ranges::count_if(points, [&](const NamedPoint& point) { return holds(names, point.name); });
        if (count > most) {
            most = count;
            best = kind;
        }
    }
    if (most == 0) {
        throw source.error_at(points.empty() ? 0 : points.front().at,
                              "no landmark of any kind of case is among the names",
                              points.empty() ? "" : did_you_mean(points.front().name, landmark_names(best)));
    }
    return best;
}

void add_points(CaseBuilder& builder, std::span<const NamedPoint> points, const Source& source) {
    if (!builder.kind_is_known()) builder.kind(kind_of(points, source));
    const std::vector<std::string> names = landmark_names(builder.kind());
    const std::vector<std::string> vertebrae = vertebra_names(builder.kind());
    bool auxiliary = false;
    for (const NamedPoint& point : points) {
        if (holds(names, point.name)) {
            builder.landmark(point.name, point.position, point.at);
        } else if (holds(vertebrae, point.name)) {
            builder.vertebra_point(point.name, point.position, point.at);
        } else if (is_auxiliary(point.name)) {
            auxiliary = true;
        } else {
            std::vector<std::string> known = names;
            known.insert(known.end(), vertebrae.begin(), vertebrae.end());
            add_own(builder, point, std::move(known), source);
        }
    }
    if (auxiliary) builder.note("auxiliary points (auxNN) left out");
}

bool is_reserved(const std::string& name, Kind kind) {
    return is_auxiliary(name) || holds(vertebra_names(kind), name);
}

std::vector<Landmark> all_landmarks(const Case& record) {
    std::vector<Landmark> all = record.landmarks;
    all.insert(all.end(), record.vertebrae.begin(), record.vertebrae.end());
    all.insert(all.end(), record.user.begin(), record.user.end());
    return all;
}

}  // namespace cephtool
