// Splines: their points, samples and lengths.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <sstream>
#include <vector>

#include "CalcTool.h"
#include "Tools.h"
#include "render/spline.h"
#include "tests/render/recorded.h"

namespace {

using Points = std::vector<tagPOINT>;

CPointD at(const std::vector<CPointD>& p, double t, int kind, const CRect& clip = CRect()) {
    CPointD result;
    CTools::SplineCal(&result.x, &result.y, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y, t, clip,
                      kind);
    return result;
}

Points drawn(const Points& controls, bool closed, double zoom = 1.0, CPoint offset = {}, int flip = 0) {
    tool::RecordingSurface surface;
    CTools::Draw_SPLine(&surface, offset, zoom, controls.data(), static_cast<short>(controls.size()), 0, 1, closed, 0,
                        flip);
    std::istringstream rest(surface.text().substr(surface.text().find("polyline") + 8));
    Points points;
    for (tagPOINT p; rest >> p.x >> p.y;) points.push_back(p);
    return points;
}

Points random_controls(std::mt19937& random) {
    std::uniform_int_distribution<int> count(3, 12), pixel(-300, 2000);
    Points controls(static_cast<std::size_t>(count(random)));
    for (tagPOINT& p : controls) p = {pixel(random), pixel(random)};
    return controls;
}

// The samples written plainly: from control point to control point, the outer neighbours by index.
Points plainly_sampled(const Points& c, bool closed) {
    const int n = static_cast<int>(c.size());
    std::vector<CPointD> kept;
    for (int i = 0; i < (closed ? n : n - 1); ++i) {
        std::vector<CPointD> four;
        for (int k = i - 1; k <= i + 2; ++k)
            four.emplace_back(CPoint(c[static_cast<std::size_t>(closed ? (k + n) % n : std::clamp(k, 0, n - 1))]));
        const double dx = four[2].x - four[1].x, dy = four[2].y - four[1].y;
        const double dt = 1 / std::max(std::sqrt(dx * dx + dy * dy) / 5.0, 10.0);
        for (double t = 0; t <= 1.0; t += dt) {
            const CPointD p = at(four, t, 0);
            if (kept.empty() || std::sqrt(std::pow(p.x - kept.back().x, 2) + std::pow(p.y - kept.back().y, 2)) >= 10.0)
                kept.push_back(p);
        }
    }
    if (closed && kept.front() != kept.back()) kept.push_back(kept.front());
    Points cut;
    for (const CPointD& p : kept) cut.push_back({static_cast<int>(p.x), static_cast<int>(p.y)});
    return cut;
}

TEST(SplineCal, MeetsItsControlPointsExactly) {
    std::mt19937 random(1974);
    std::uniform_real_distribution<double> pixel(-5000, 5000);
    for (int i = 0; i < 10000; ++i) {
        std::vector<CPointD> p(4);
        for (CPointD& each : p) each = CPointD(pixel(random), pixel(random));
        ASSERT_TRUE(at(p, 0.0, 0) == p[1] && at(p, 1.0, 0) == p[2]) << i;
    }
}

TEST(SplineCal, BlendsByItsKindAndIsCutIntoTheClip) {
    const std::vector<CPointD> p = {{0, 0}, {60, 6}, {120, -6}, {600, 60}};
    const struct {
        double t;
        int kind;
        CRect clip;
        CPointD expected;
    } rows[] = {
        {0.5, 0, {}, {63.75, -3.75}},
        {0.0, 1, {}, {60, 3}},
        {1.0, -1, {}, {190, 7}},
        {0.5, 7, {}, {98.75, 1.25}},
        {0.5, 0, {0, 0, 63, 9}, {63, 0}},  // both edges belong to the clip
        {0.5, 0, {70, -9, 99, -4}, {70, -4}},
        {0.5, 0, {70, -4, 70, 9}, {63.75, -3.75}},  // an empty clip
    };
    for (const auto& row : rows)
        EXPECT_TRUE(at(p, row.t, row.kind, row.clip) == row.expected)
            << row.t << ' ' << row.kind << ": " << at(p, row.t, row.kind, row.clip).x << ", "
            << at(p, row.t, row.kind, row.clip).y;
}

TEST(Curve, SamplesASegmentByItsChord) {
    const struct {
        double chord;
        int samples;
    } rows[] = {
        {20, 11}, {50, 11},
        {80, 17}, {100, 20},  // Kept: 1/20 summed up twenty times passes 1, so the segment's end is missing
        {0, 11},
    };
    for (const auto& row : rows) {
        const tool::Controls c{{0, 0}, {0, 0}, {row.chord, 0}, {2 * row.chord, 0}};
        int samples = 0;
        tool::sample(c, tool::sample_step(c, 2), [&](tool::Vec2) { ++samples; });
        EXPECT_EQ(samples, row.samples) << row.chord;
    }
}

TEST(Curve, KeepsSamplesExactlyTenPixelsApart) {
    // Every sample behind (80, 0) is a whole multiple of 5.
    const Points points = drawn({{0, 0}, {80, 0}, {160, 0}, {240, 0}, {320, 0}}, false);
    int ten_apart = 0;
    for (std::size_t i = 1; i < points.size(); ++i) ten_apart += points[i].x - points[i - 1].x == 10;
    EXPECT_GE(ten_apart, 14);
    const Points slanted = {{7, -2}, {22, 18}, {37, 38}, {52, 58}};  // some squares fall a bit short of 100
    EXPECT_TRUE(drawn(slanted, false) == plainly_sampled(slanted, false));
}

TEST(Curve, IsDrawnThroughThePlainSamples) {
    std::mt19937 random(1985);
    for (int i = 0; i < 500; ++i) {
        const Points controls = random_controls(random);
        for (const bool closed : {false, true}) {
            const Points points = drawn(controls, closed), expected = plainly_sampled(controls, closed);
            ASSERT_TRUE(points == expected) << "curve " << i << (closed ? ", closed" : ", open");
            // Moved by whole pixels and upside down.
            Points moved = drawn(controls, closed, 1.0, {17, -400}, 1);
            for (tagPOINT& p : moved) p = {p.x + 17, -p.y - 400};
            ASSERT_TRUE(moved == expected) << "curve " << i;
        }
    }
}

TEST(Curve, OfAnyCoordinatesEndsSoonWithinThirtyTwoBits) {
    EXPECT_EQ(drawn({{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}}, false, 3.0, {5, 5}, 1),
              (Points{{INT_MIN, INT_MAX}, {INT_MAX, -INT_MAX}}));
    const Points points = drawn({{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, {0, INT_MAX}, {INT_MAX, 0}}, true, 1e9);
    EXPECT_GT(points.size(), 1000000u);
    EXPECT_LT(points.size(), 5000000u);
}

// Against every pixel that is drawn: the recorded polylines, searched plainly.
TEST(Hit, IsWhatIsSeenNearest) {
    std::mt19937 random(2024);
    std::uniform_int_distribution<int> pixel(-300, 1500), window(-200, 900), radius(0, 60);
    for (int round = 0; round < 100; ++round) {
        const double zoom = round % 3 == 0 ? 1.0 : 0.3 + 0.03 * round;
        const CPoint offset(round % 7, -round), at(window(random), window(random));
        const int reach = radius(random);
        std::vector<Points> controls(6);
        std::vector<tagTRACELINE> lines;
        double nearest_line = 1e9, nearest_dot = 1e9;
        int line = -1, dot = -1;
        const auto meet = [](double gap, int index, double& nearest, int& found) {
            if (gap < nearest) nearest = gap, found = index;
        };
        for (int i = 0; i < 6; ++i) {
            Points& own = controls[static_cast<std::size_t>(i)] = random_controls(random);
            own.resize(static_cast<std::size_t>(i) < 4 ? own.size() : static_cast<std::size_t>(6 - i));  // 2, 1
            lines.push_back({own.data(), static_cast<short>(own.size()), static_cast<unsigned char>(i % 2)});
            if (own.size() < 2) continue;
            const Points seen = drawn(own, i % 2, zoom, offset);
            for (std::size_t k = 1; k < seen.size(); ++k)
                for (double t = 0; t <= 1; t += 1.0 / 64)
                    meet(std::hypot(seen[k - 1].x + t * (seen[k].x - seen[k - 1].x) - at.x,
                                    seen[k - 1].y + t * (seen[k].y - seen[k - 1].y) - at.y),
                         i, nearest_line, line);
        }
        const int found = CCalcTool::GetNearTraceLine(lines.data(), 6, at, reach, zoom, offset);
        if (std::abs(nearest_line - reach) > 1) {
            ASSERT_EQ(found, nearest_line <= reach ? line : -1) << round;
        }
        Points& dots = controls[0];
        dots[0] = {0, 0};
        for (int i = 1; i < static_cast<int>(dots.size()); ++i) {
            const tagPOINT p = dots[static_cast<std::size_t>(i)];
            const CPoint device(static_cast<int>(zoom * p.x) - offset.x, static_cast<int>(zoom * p.y) - offset.y);
            meet(std::hypot(device.x - at.x, device.y - at.y), i, nearest_dot, dot);
            const CPoint back = CCalcTool::Get_TRPoint(device, zoom, offset);
            const CPoint again(static_cast<int>(zoom * back.x) - offset.x, static_cast<int>(zoom * back.y) - offset.y);
            ASSERT_TRUE(zoom < 1 ? again == device : back == p) << zoom;
        }
        const int count = static_cast<int>(dots.size());
        ASSERT_EQ(CCalcTool::GetPointIndex(dots.data(), count, at, reach, zoom, offset),
                  nearest_dot <= reach ? dot : -1);
    }
    const tagPOINT two[] = {{3, 4}, {-3, -4}};
    EXPECT_EQ(CCalcTool::GetPointIndex(two, 2, {}, 5), 0);
    EXPECT_EQ(CCalcTool::GetPointIndex(two, 2, {}, 4), -1);
    EXPECT_EQ(CCalcTool::GetPointIndex(two, 2, {3, 4}, -1), -1);
    EXPECT_EQ(CCalcTool::GetPointIndex(nullptr, 2, {}, 5), -1);
    EXPECT_EQ(CCalcTool::GetNearTraceLine(nullptr, 2, {}, 5), -1);
    EXPECT_TRUE(CCalcTool::Get_TRPoint({7, 7}, 0, {}) == CPoint());
}

TEST(CurveLength, IsMeasuredBetweenControlPoints) {
    const Points line = {{0, 0}, {30, 40}, {60, 80}, {90, 120}}, two = {{0, 0}, {3, 4}};
    const Points square = {{0, 0}, {100, 0}, {100, 100}, {0, 100}};
    const struct {
        const Points& points;
        int from, to;
        unsigned char closed;
        double expected;
    } rows[] = {
        {line, 0, 3, 0, 15.0}, {line, 2, 1, 0, 5.0}, {line, 2, 2, 0, 0.0}, {line, 0, 4, 0, 0.0},
        {line, -1, 2, 0, 0.0}, {two, 1, 0, 0, 0.5},  {two, 0, 1, 1, 0.5},  {two, 0, 2, 1, 0.0},
    };
    for (const auto& row : rows)
        EXPECT_NEAR(CTools::Get_SPLineLength(row.points.data(), static_cast<short>(row.points.size()), row.from, row.to,
                                             row.closed, 0.1),
                    row.expected, 1e-9)
            << row.from << " to " << row.to;
    const auto round = [&](int from, int to) { return CTools::Get_SPLineLength(square.data(), 4, from, to, 1, 1.0); };
    EXPECT_NEAR(round(0, 4), 4 * round(0, 1), 1e-9);
    EXPECT_NEAR(round(3, 1), 2 * round(0, 1), 1e-9);
    EXPECT_NEAR(round(0, 1), 104.0, 2.0);  // bulging outward
    const tagDPOINT halves[] = {{0.5, 0.5}, {50.5, 0.5}, {100.5, 0.5}};
    EXPECT_NEAR(CTools::Get_SPLineLengthd(halves, 3, 0, 2, 0, 2.0), 200.0, 1e-9);
    EXPECT_EQ(CTools::Get_SPLineLengthd(nullptr, 3, 0, 2, 0, 2.0), 0.0);
}

}  // namespace
