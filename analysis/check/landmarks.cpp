#include "analysis/check/landmarks.h"

#include <algorithm>

#include "Records.h"
#include "analysis/cast_points.h"
#include "analysis/landmark_names.h"

namespace tool {
namespace {

constexpr std::size_t longest_user_name = sizeof tagUPOINT::Name - 1;
constexpr std::size_t longest_virtual_name = sizeof tagKPOINT::Name - 1;

// Points of the third and fourth cervical vertebra, which lateral cases have beside the landmarks of the table.
constexpr std::string_view vertebra_points[] = {"C3ua", "C3up", "C3da", "C3dp", "C3la", "C3lp",
                                                "C4ua", "C4up", "C4da", "C4dp", "C4la", "C4lp"};

}  // namespace

LandmarkCheck::LandmarkCheck(int kind, Findings& findings) : findings_(findings) {
    const bool any_kind = !is_lateral(kind) && !is_frontal(kind) && !is_cast(kind);
    for (const int film : {0, 1})
        if (any_kind || (film == 0 ? is_lateral(kind) : is_frontal(kind)))
            known_.insert(known_.end(), landmark_names(film).begin(), landmark_names(film).end());
    if (any_kind || is_lateral(kind))
        known_.insert(known_.end(), std::begin(vertebra_points), std::end(vertebra_points));
    for (int slot = 0; slot < cast_point_count && (any_kind || is_cast(kind)); ++slot)
        known_.push_back(cast_point_name(slot));
}

void LandmarkCheck::check(std::string_view name) {
    if (std::ranges::find(known_, name) != known_.end()) return;
    if (name.empty()) return findings_.fault(name, "a landmark without a name; write one between the brackets");
    if (name.size() > longest_virtual_name) {
        return findings_.fault(name, quoted(name) +
                                         " is longer than any landmark's name; a landmark of your own has up to " +
                                         counted(longest_user_name, "byte"));
    }
    const std::string_view meant = meant_name(name, known_);
    if (!meant.empty())
        return findings_.fault(name, "there is no landmark " + quoted(name) + "; write " + quoted(meant) +
                                         ", or give a landmark of your own a name that is less like it");
    if (!noted_.insert(name).second) return;
    findings_.note(name, quoted(name) + " is in no table of landmarks; each case needs a " +
                             (name.size() > longest_user_name ? "virtual landmark" : "landmark of the user's own") +
                             " of that name");
}

}  // namespace tool
