#include "tracing/thin_plate_spline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tracing/plane_motion.h"

namespace cephtool {
namespace {

class Plane {
 public:
    explicit Plane(unsigned seed) : random_(seed) {}
    Position point() { return {in_(random_), in_(random_)}; }
    std::vector<Position> points(std::size_t count) {
        std::vector<Position> all(count);
        for (Position& p : all) p = point();
        return all;
    }

 private:
    std::mt19937 random_;
    std::uniform_real_distribution<double> in_{-500, 2500};
};

double gap(Position a, Position b) {
    return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y));
}

TEST(ThinPlateSpline, MeetsItsTargetsAndItsAreaFactorIsTheDerivativesDeterminant) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        Plane plane(seed);
        const auto from = plane.points(3 + seed * 2), to = plane.points(3 + seed * 2);
        const auto spline = ThinPlateSpline::through(from, to, 0);
        ASSERT_TRUE(spline);
        for (std::size_t i = 0; i < from.size(); ++i) ASSERT_LT(gap((*spline)(from[i]), to[i]), 1e-6) << seed;
        const Position p = plane.point();
        constexpr double h = 1e-3;
        const Position e = (*spline)({p.x + h, p.y}), w = (*spline)({p.x - h, p.y});
        const Position s = (*spline)({p.x, p.y + h}), n = (*spline)({p.x, p.y - h});
        const double area = ((e.x - w.x) * (s.y - n.y) - (e.y - w.y) * (s.x - n.x)) / (4 * h * h);
        EXPECT_NEAR(spline->area_factor(p), area, 1e-4 * std::max(1.0, std::abs(area))) << seed;
    }
}

TEST(ThinPlateSpline, IsTheAffineMapThatItsTargetsFollowWhateverTheSmoothing) {
    const AffineMap map{0.9, -0.3, 0.4, 1.2, 150, -70};
    Plane plane(3);
    const auto from = plane.points(30);
    std::vector<Position> to;
    for (const Position& p : from) to.push_back(map(p));
    for (const double smoothing : {0.0, 0.01, ThinPlateSpline::stiff}) {
        const auto spline = ThinPlateSpline::through(from, to, smoothing);
        ASSERT_TRUE(spline);
        for (const Position& p : plane.points(50)) {
            EXPECT_LT(gap((*spline)(p), map(p)), 1e-5);
            EXPECT_NEAR(spline->area_factor(p), map.area_factor(), 1e-7);
        }
    }
}

TEST(PlaneMotion, StretchIsTheRatioOfTheLongestToTheShortestWay) {
    for (const double factor : {0.25, 1.0, 1.35, 7.0})
        for (const double turn : {0.0, 0.4, 2.0}) {
            const double c = std::cos(turn), s = std::sin(turn), k = std::cos(2 - turn), l = std::sin(2 - turn);
            const AffineMap map{c * factor * k - s * l, -c * factor * l - s * k, s * factor * k + c * l,
                                -s * factor * l + c * k};  // a turn, a stretch along x, another turn
            EXPECT_NEAR(stretch(map), std::max(factor, 1 / factor), 1e-6) << turn;
        }
}

TEST(ThinPlateSpline, NeedsThreePointsThatLieApart) {
    const Position a{10, 20}, b{110, 220}, c{60, 120}, d{500, 100};
    const std::vector<Position> cases[] = {{}, {a, b}, {a, b, c}, {a, b, d, a}};
    for (const auto& points : cases) EXPECT_FALSE(ThinPlateSpline::through(points, points, 0)) << points.size();
    EXPECT_TRUE(ThinPlateSpline::through(std::vector{a, b, d}, std::vector{a, b, d}, 0));
}

}  // namespace
}  // namespace cephtool
