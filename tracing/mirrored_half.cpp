#include "tracing/mirrored_half.h"

#include <algorithm>
#include <cmath>

namespace cephtool {
namespace {

constexpr int samples_a_span = 4;          // of a curve, between two control points
constexpr std::size_t most_points = 8000;  // so that the samples can be drawn as one curve

const Position* place_of(const std::vector<Landmark>& landmarks, const char* name) {
    const auto found = std::ranges::find(landmarks, name, &Landmark::name);
    return found == landmarks.end() ? nullptr : &found->position;
}

// Above 0 on the patient's right of a midline that runs down.
double side_of(Position p, const Midline& line) {
    const double x = line.to.x - line.from.x, y = line.to.y - line.from.y;
    return x * (p.y - line.from.y) - y * (p.x - line.from.x);
}

Position mirrored(Position p, const Midline& line) {
    const double x = line.to.x - line.from.x, y = line.to.y - line.from.y;
    const double twice = 2 * side_of(p, line) / (x * x + y * y);
    return {p.x + twice * y, p.y - twice * x};
}

Position between(Position a, Position b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

// Points on the Catmull-Rom curve, as it is drawn.
std::vector<Position> samples_of(const Outline& outline) {
    const std::vector<Position>& points = outline.points;
    const std::size_t n = points.size(), spans = outline.closed ? n : n - 1;
    std::vector<Position> samples;
    for (std::size_t i = 0; i < spans; ++i) {
        const auto at = [&](std::size_t k) {
            return outline.closed ? points[(i + k + n - 1) % n]
                                  : points[std::min(std::max(i + k, std::size_t{1}) - 1, n - 1)];
        };
        const Position a = at(0), b = at(1), c = at(2), d = at(3);
        for (int step = 0; step < samples_a_span; ++step) {
            const double t = static_cast<double>(step) / samples_a_span;
            const auto blend = [t](double p, double q, double r, double s) {
                return q + t * (r - p + t * (2 * p - 5 * q + 4 * r - s + t * (3 * (q - r) + s - p))) / 2;
            };
            samples.push_back({blend(a.x, b.x, c.x, d.x), blend(a.y, b.y, c.y, d.y)});
        }
    }
    samples.push_back(outline.closed ? points.front() : points.back());
    return samples;
}

}  // namespace

std::optional<Midline> midline_of(const std::vector<Landmark>& landmarks) {
    const Position *cg = place_of(landmarks, "CG"), *ans = place_of(landmarks, "ANS");
    const auto apart = [](Position a, Position b) { return std::hypot(a.x - b.x, a.y - b.y) > 1e-3; };
    if (cg && ans && apart(*cg, *ans)) return Midline{"CG-ANS", *cg, *ans};
    const Position *right = place_of(landmarks, "ZR"), *left = place_of(landmarks, "ZL");
    if (!right || !left || !apart(*right, *left)) return {};
    const Position middle = between(*right, *left, 0.5);
    return Midline{"ZR-ZL", middle, {middle.x - (left->y - right->y), middle.y + (left->x - right->x)}};
}

std::vector<FittedCurve> mirrored_half(const std::vector<FittedCurve>& curves, const Midline& midline, Half half) {
    const double wanted = half == Half::right ? 1 : -1;
    std::vector<FittedCurve> made;
    for (const FittedCurve& curve : curves) {
        if (curve.outline.points.size() < 2 || curve.outline.points.size() > most_points) continue;
        const std::vector<Position> samples = samples_of(curve.outline);
        std::vector<Position> run;
        const auto end_run = [&] {
            if (run.size() > 1) {
                made.push_back({{curve.outline.name, false, run, {}}, curve.style});
                made.back().style.dotted = true;
            }
            run.clear();
        };
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const double here = wanted * side_of(samples[i], midline);
            const double before = i == 0 ? here : wanted * side_of(samples[i - 1], midline);
            if ((here > 0) != (before > 0)) {
                const Position crossing = between(samples[i - 1], samples[i], before / (before - here));
                run.push_back(crossing);
                if (here <= 0) end_run();
            }
            if (here > 0) run.push_back(mirrored(samples[i], midline));
        }
        end_run();
    }
    return made;
}

}  // namespace cephtool
