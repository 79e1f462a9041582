#include "web/engine/placing.h"

#include <Records.h>

#include <algorithm>
#include <cmath>

#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/vertebrae.h"
#include "web/engine/fault.h"

namespace engine {
namespace {

using cephtool::Case;
using cephtool::Landmark;
using cephtool::Position;

std::vector<Landmark>* list_with(Case& record, const std::string& name) {
    for (auto* list : {&record.landmarks, &record.vertebrae, &record.user})
        if (std::ranges::find(*list, name, &Landmark::name) != list->end()) return list;
    return nullptr;
}

// Places it in a case of its own, which has the checks.
Case checked_landmark(cephtool::Kind kind, const std::string& name, Position at) {
    const cephtool::Source source{name, {}};
    cephtool::CaseBuilder builder(source);
    builder.kind(kind);
    for (const double coordinate : {at.x, at.y})
        if (!(std::abs(coordinate) <= cephtool::largest_coordinate))
            throw Fault("out_of_range", "the coordinate of " + cephtool::in_quotes(name) + " is out of range", {},
                        {name});
    const auto holds = [&](const std::vector<std::string>& names) {
        return std::ranges::find(names, name) != names.end();
    };
    if (holds(cephtool::landmark_names(kind))) {
        builder.landmark(name, at, 0);
    } else if (kind == cephtool::Kind::lateral && holds(cephtool::vertebra_point_names())) {
        builder.vertebra_point(name, at, 0);
    } else {
        builder.user_landmark(name, at, 0);
    }
    return builder.finished();
}

}  // namespace

void place_landmark(Case& record, const std::string& name, Position at) {
    Case checked = checked_landmark(record.kind, name, at);
    if (checked.landmarks.empty() && checked.vertebrae.empty() && checked.user.empty())
        throw Fault("at_origin", cephtool::in_quotes(name) + " at (0, 0) counts as not placed",
                    "Place it a pixel beside.", {name});
    if (std::vector<Landmark>* list = list_with(record, name)) {
        std::ranges::find(*list, name, &Landmark::name)->position = at;
    } else {
        if (!checked.user.empty() && record.user.size() >= USER_POINT_MAX)
            throw Fault("too_many_own", "there are 100 landmarks of your own already");
        const auto append = [](std::vector<Landmark>& to, const std::vector<Landmark>& from) {
            to.insert(to.end(), from.begin(), from.end());
        };
        append(record.landmarks, checked.landmarks);
        append(record.vertebrae, checked.vertebrae);
        append(record.user, checked.user);
    }
}

void remove_landmark(Case& record, const std::string& name) {
    if (std::vector<Landmark>* list = list_with(record, name))
        std::erase_if(*list, [&](const Landmark& landmark) { return landmark.name == name; });
}

}  // namespace engine
