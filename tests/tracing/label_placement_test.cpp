#include "tracing/label_placement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace cephtool {
namespace {

bool inside(const Box& box, Position p) {
    return p.x > box.left && p.x < box.right && p.y > box.top && p.y < box.bottom;
}

TEST(LabelPlacement, NoLabelCoversAnotherALandmarkAnObstacleOrTheEdge) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> at(10, 110), width(3, 14);
        std::vector<Label> labels;
        for (int i = 0; i < 40; ++i) labels.push_back({{at(random), at(random)}, width(random), 3});
        const LabelSurroundings around{{0, 0, 120, 120}, 0.5, {{40, 40, 80, 46}, {10, 90, 60, 100}}, {{60, 60}}};
        const auto placed = placed_labels(labels, around);
        ASSERT_EQ(placed.size(), labels.size());
        for (std::size_t i = 0; i < placed.size(); ++i) {
            if (!placed[i]) continue;
            const Box& box = placed[i]->box;
            const Position dot = labels[i].landmark;
            const double dx = dot.x - std::clamp(dot.x, box.left, box.right),
                         dy = dot.y - std::clamp(dot.y, box.top, box.bottom);
            EXPECT_EQ(placed[i]->leader.has_value(), dx * dx + dy * dy > 1.5 * 1.5);
            EXPECT_TRUE(std::min(box.left, box.top) >= 0 && std::max(box.right, box.bottom) <= 120) << seed;
            for (const Label& label : labels) EXPECT_FALSE(inside(box, label.landmark)) << seed << " " << i;
            for (const Box& obstacle : around.obstacles) EXPECT_FALSE(overlap(box, obstacle)) << seed << " " << i;
            for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(placed[j] && overlap(box, placed[j]->box)) << seed;
        }
        const auto missing = std::ranges::count_if(placed, [](const auto& place) { return !place; });
        EXPECT_LE(missing, 2) << seed;
    }
}

TEST(LabelPlacement, ALoneLabelStandsAtTheRightAndOneThatMustGiveWayHasALeader) {
    const Label one[] = {{{50, 50}, 10, 3}};
    const LabelSurroundings open{{0, 0, 100, 100}, 0.5, {}, {}};
    const PlacedLabel beside = placed_labels(one, open)[0].value();
    EXPECT_TRUE(beside.box.left > 50 && beside.box.left < 52 && !beside.leader);

    LabelSurroundings inked = open;
    for (double y = 49; y <= 51; y += 0.5) inked.ink.push_back({55, y});
    EXPECT_FALSE(inside(placed_labels(one, inked)[0]->box, {55, 50}));

    LabelSurroundings walled = open;
    walled.obstacles = {{44, 45, 56, 55}};
    const PlacedLabel moved = placed_labels(one, walled)[0].value();
    EXPECT_TRUE(moved.leader && !overlap(moved.box, walled.obstacles[0]));

    walled.obstacles = {{0, 0, 100, 100}};
    EXPECT_FALSE(placed_labels(one, walled)[0]);

    // Room for all three, if the one whose neighbours are near chooses first.
    const Label crowded[] = {{{9, 2}, 8, 3}, {{18, 8}, 8, 3}, {{4, 5}, 3, 3}};
    const auto placed = placed_labels(crowded, {{0, 0, 19, 9}, 0.5, {}, {}});
    EXPECT_TRUE(placed[0] && placed[1] && placed[2]);
}

}  // namespace
}  // namespace cephtool
