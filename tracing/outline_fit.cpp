#include "tracing/outline_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "tracing/plane_motion.h"
#include "tracing/thin_plate_spline.h"

namespace cephtool {
namespace {

using Points = std::vector<Position>;

// On the average over its points a curve may be this far from the nearest landmark; one without anchors, less.
constexpr double farthest_mm = 25, farthest_without_anchors_mm = 16;
// Where the map shrinks areas to less than this part of what it does on the whole, a curve is as good as folded.
constexpr double flattest = 0.15;
// A tooth that would be stretched more than this one way follows its two main landmarks only.
constexpr double most_stretch = 1.35;

constexpr double smoothings[] = {0, 1e-4, 1e-3, 1e-2, 1e-1, ThinPlateSpline::stiff};

double distance(Position a, Position b) {
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
}

struct Pair {
    Position from, to;  // a landmark of the template and of the case
};

// The two that lie farthest apart in the template come first.
void put_farthest_first(std::vector<Pair>& pairs) {
    std::size_t first = 0, second = 1;
    for (std::size_t i = 0; i < pairs.size(); ++i)
        for (std::size_t j = i + 1; j < pairs.size(); ++j)
            if (distance(pairs[i].from, pairs[j].from) > distance(pairs[first].from, pairs[second].from)) {
                first = i;
                second = j;
            }
    std::swap(pairs[0], pairs[first]);
    std::swap(pairs[1], pairs[second]);
}

// Of two landmarks or more.
AffineMap stiff_motion(std::vector<Pair> pairs) {
    put_farthest_first(pairs);
    Points from, to;
    for (const Pair& pair : pairs) {
        from.push_back(pair.from);
        to.push_back(pair.to);
    }
    const AffineMap on_axis = similarity(std::span(from).first(2), std::span(to).first(2));
    if (pairs.size() < 3) return on_axis;
    const AffineMap through_three = affine(std::span(from).first<3>(), std::span(to).first<3>());
    const bool keeps_shape = through_three.area_factor() > 0 && stretch(through_three) < most_stretch;
    return keeps_shape ? through_three : on_axis;
}

template <class Map>
Points mapped(const Points& points, const Map& map) {
    Points to;
    for (const Position& p : points) to.push_back(map(p));
    return to;
}

class Fitter {
 public:
    Fitter(const OutlineTemplate& face, const std::vector<Landmark>& landmarks) : face_(face) {
        for (const Landmark& landmark : landmarks)
            if (const Position* from = face.find_landmark(landmark.name)) {
                placed_[landmark.name] = {*from, landmark.position};
            }
        find_teeth();
        find_maps();
    }

    OutlineFit fit() {
        if (maps_.empty()) {
            result_.notes.push_back(
                "no outlines are drawn: they need three landmarks or more that lie as in a face looking right");
            return result_;
        }
        for (const TemplateCurve& curve : face_.curves) fit(curve);
        note("outlines left out, too few landmarks near them: ", left_out_);
        note("outlines drawn smoother than their landmarks ask, since they would fold: ", smoothed_);
        return result_;
    }

 private:
    // Teeth with two landmarks or more in the template; what the others have goes to the bone.
    void find_teeth() {
        std::map<std::string, std::vector<std::string>> anchors;
        for (const TemplateCurve& curve : face_.curves) {
            if (curve.tooth.empty()) continue;
            std::vector<std::string>& own = anchors[curve.tooth];
            for (const std::string& anchor : curve.outline.anchors)
                if (std::ranges::find(own, anchor) == own.end()) own.push_back(anchor);
        }
        for (const auto& [tooth, names] : anchors) {
            if (names.size() < 2) continue;
            std::vector<Pair> pairs;
            for (const std::string& name : names) {
                of_teeth_.push_back(name);
                if (const auto found = placed_.find(name); found != placed_.end()) pairs.push_back(found->second);
            }
            teeth_[tooth] = pairs.size() < 2 ? std::nullopt : std::optional(stiff_motion(pairs));
        }
    }

    void find_maps() {
        Points from, to;
        for (const auto& [name, pair] : placed_) {
            if (std::ranges::find(of_teeth_, name) != of_teeth_.end()) continue;
            from.push_back(pair.from);
            to.push_back(pair.to);
        }
        for (const TemplateCurve& curve : face_.curves) {
            const auto tooth = teeth_.find(curve.tooth);
            if (tooth == teeth_.end() || !tooth->second || curve.outline.closed) continue;
            for (const Position& neck : {curve.outline.points.front(), curve.outline.points.back()}) {
                from.push_back(neck);
                to.push_back((*tooth->second)(neck));
            }
        }
        const auto stiff = ThinPlateSpline::through(from, to, ThinPlateSpline::stiff);
        if (!stiff) return;
        usual_area_ = stiff->area_factor(from.front());
        if (!(usual_area_ > 0)) return;  // flat, or turned over
        for (const double smoothing : smoothings)
            if (const auto map = ThinPlateSpline::through(from, to, smoothing)) maps_.push_back(*map);
    }

    void fit(const TemplateCurve& curve) {
        const auto tooth = teeth_.find(curve.tooth);
        if (tooth != teeth_.end() ? !tooth->second : !is_near(curve.outline)) {
            left_out_.push_back(curve.outline.name);
            return;
        }
        Points points;
        if (tooth != teeth_.end()) {
            points = mapped(curve.outline.points, *tooth->second);
        } else {
            const ThinPlateSpline& map = map_for(curve.outline);
            points = mapped(curve.outline.points, map);
            if (curve.style.tissue == Tissue::tooth) {
                points = mapped(curve.outline.points, similarity(curve.outline.points, points));
            }
        }
        result_.curves.push_back({settled(curve.outline, std::move(points)), curve.style});
    }

    bool is_near(const Outline& curve) const {
        double sum = 0;
        for (const Position& p : curve.points) {
            double nearest = std::numeric_limits<double>::infinity();
            for (const auto& [name, pair] : placed_) nearest = std::min(nearest, distance(p, pair.from));
            sum += nearest;
        }
        return sum / static_cast<double>(curve.points.size()) * face_.mm_per_pixel <=
               (curve.anchors.empty() ? farthest_without_anchors_mm : farthest_mm);
    }

    // The first map that does not fold the curve; the last one bends too little to do so.
    const ThinPlateSpline& map_for(const Outline& curve) {
        for (const ThinPlateSpline& map : maps_) {
            if (folds(curve, map)) continue;
            if (&map != &maps_.front()) smoothed_.push_back(curve.name);
            return map;
        }
        return maps_.back();
    }

    bool folds(const Outline& curve, const ThinPlateSpline& map) const {
        constexpr int steps = 4;  // between two points
        const std::size_t count = curve.points.size();
        for (std::size_t i = 0; i + (curve.closed ? 0 : 1) < count; ++i)
            for (int step = 0; step <= steps; ++step) {
                const double t = static_cast<double>(step) / steps;
                const Position a = curve.points[i], b = curve.points[(i + 1) % count];
                const Position p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
                if (!(map.area_factor(p) > flattest * usual_area_)) return true;
            }
        return false;
    }

    // The curve shifted onto its anchors: each by what it misses, the points between two of them by something in
    // between.
    Outline settled(const Outline& curve, Points points) const {
        struct Knot {
            double at;  // way along the template's curve
            Position shift;
        };
        Outline result{curve.name, curve.closed, std::move(points), {}};
        std::vector<double> ways{0};
        for (std::size_t i = 1; i < curve.points.size(); ++i) {
            ways.push_back(ways.back() + distance(curve.points[i - 1], curve.points[i]));
        }
        const double round_trip = ways.back() + distance(curve.points.back(), curve.points.front());
        std::vector<Knot> knots;
        for (std::size_t i = 0; i < curve.points.size(); ++i)
            for (const std::string& anchor : curve.anchors) {
                const auto found = placed_.find(anchor);
                if (found == placed_.end() || distance(found->second.from, curve.points[i]) > 0) continue;
                const Position to = found->second.to;
                knots.push_back({ways[i], {to.x - result.points[i].x, to.y - result.points[i].y}});
                result.anchors.push_back(anchor);
            }
        if (knots.empty()) return result;
        if (curve.closed) {
            Knot before = knots.back(), after = knots.front();
            before.at -= round_trip;
            after.at += round_trip;
            knots.insert(knots.begin(), before);
            knots.push_back(after);
        }
        for (std::size_t i = 0; i < result.points.size(); ++i) {
            const auto next = std::ranges::find_if(knots, [&](const Knot& knot) { return knot.at >= ways[i]; });
            Position shift = next == knots.end() ? knots.back().shift : next->shift;
            if (next != knots.end() && next != knots.begin() && next->at > ways[i]) {
                const Knot& last = *(next - 1);
                const double t = (ways[i] - last.at) / (next->at - last.at);
                shift = {last.shift.x + t * (shift.x - last.shift.x), last.shift.y + t * (shift.y - last.shift.y)};
            }
            result.points[i] = {result.points[i].x + shift.x, result.points[i].y + shift.y};
        }
        return result;
    }

    void note(const char* what, const std::vector<std::string>& names) {
        std::string all;
        for (const std::string& name : names) all += (all.empty() ? "" : "; ") + name;
        if (!all.empty()) result_.notes.push_back(what + all);
    }

    const OutlineTemplate& face_;
    std::map<std::string, Pair> placed_;
    std::vector<std::string> of_teeth_;                      // landmarks that move a tooth and nothing else
    std::map<std::string, std::optional<AffineMap>> teeth_;  // nothing: too few landmarks
    std::vector<ThinPlateSpline> maps_;                      // from the one that meets all landmarks to the stiffest
    double usual_area_ = 0;
    std::vector<std::string> left_out_, smoothed_;
    OutlineFit result_;
};

}  // namespace

OutlineFit fitted_outlines(const OutlineTemplate& face, const std::vector<Landmark>& landmarks) {
    if (face.curves.empty()) return {};
    return Fitter(face, landmarks).fit();
}

}  // namespace cephtool
