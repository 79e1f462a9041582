#include "tracing/landmark_suggestion.h"

#include "tracing/plane_motion.h"
#include "tracing/thin_plate_spline.h"

namespace cephtool {
namespace {

// A spline's affine part takes few points for a shear and leads far astray beyond them.
constexpr std::size_t least_for_spline = 4;
// Landmarks of a real face miss those of the average one by millimetres: a spline that meets all of them bends more
// between them than faces do.
constexpr double smoothing = 0.3;

}  // namespace

LandmarkSuggestion::LandmarkSuggestion(const OutlineTemplate& face, const std::vector<Landmark>& placed) : face_(face) {
    std::vector<Position> from, to;
    for (const Landmark& landmark : placed)
        if (const Position* at = face.find_landmark(landmark.name)) {
            from.push_back(*at);
            to.push_back(landmark.position);
        }
    if (from.size() < least_placed) return;
    const AffineMap motion = similarity(from, to);
    if (!(motion.area_factor() > 0)) return;
    map_ = motion;
    if (from.size() < least_for_spline) return;
    if (const auto spline = ThinPlateSpline::through(from, to, smoothing)) map_ = *spline;
}

std::optional<Position> LandmarkSuggestion::operator()(const std::string& name) const {
    const Position* at = face_.find_landmark(name);
    return at && map_ ? std::optional(map_(*at)) : std::nullopt;
}

}  // namespace cephtool
