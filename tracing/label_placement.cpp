#include "tracing/label_placement.h"

#include <algorithm>
#include <cmath>

namespace cephtool {
namespace {

Box grown(const Box& box, double by) {
    return {box.left - by, box.top - by, box.right + by, box.bottom + by};
}

bool contains(const Box& outer, const Box& inner) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

bool contains(const Box& box, Position p) {
    return p.x >= box.left && p.x <= box.right && p.y >= box.top && p.y <= box.bottom;
}

Position nearest_in(const Box& box, Position p) {
    return {std::clamp(p.x, box.left, box.right), std::clamp(p.y, box.top, box.bottom)};
}

double distance(Position a, Position b) {
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
}

// Whether the way from a to b meets the box, looked at in small steps.
bool meets(Position a, Position b, const Box& box) {
    constexpr int steps = 24;
    for (int i = 0; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        if (contains(box, Position{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)})) return true;
    }
    return false;
}

// Directions from the landmark, the most welcome first: to the right a reader's eye runs on from dot to name.
constexpr Position directions[] = {{1, 0},         {0.71, -0.71}, {0.71, 0.71},   {0, -1},
                                   {0, 1},         {-1, 0},       {-0.71, -0.71}, {-0.71, 0.71},
                                   {0.92, -0.38},  {0.92, 0.38},  {0.38, -0.92},  {0.38, 0.92},
                                   {-0.38, -0.92}, {-0.38, 0.92}, {-0.92, -0.38}, {-0.92, 0.38}};
constexpr int rings = 14;
constexpr int near_rings = 3;  // all of these are compared; one beyond them is only taken when they are full

class Placer {
 public:
    Placer(std::span<const Label> labels, const LabelSurroundings& around)
        : labels_(labels), around_(around), placed_(labels.size()) {}

    std::vector<std::optional<PlacedLabel>> places() {
        std::vector<std::size_t> order(labels_.size());
        for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
        std::vector<int> crowd(labels_.size());
        for (std::size_t i = 0; i < order.size(); ++i) crowd[i] = neighbours(labels_[i]);
        std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return crowd[a] > crowd[b]; });
        constexpr int rounds = 3;  // later ones see all the others
        for (int round = 0; round < rounds; ++round) {
            for (const std::size_t i : order) {
                placed_[i].reset();
                placed_[i] = best_place(i);
            }
        }
        return placed_;
    }

 private:
    int neighbours(const Label& label) const {
        return static_cast<int>(std::ranges::count_if(
            labels_, [&](const Label& other) { return distance(label.landmark, other.landmark) < 4 * label.height; }));
    }

    Box box_at(const Label& label, Position direction, int ring) const {
        // The box touches a circle about the landmark, which grows from ring to ring.
        const double radius = 2 * around_.clearance + ring * label.height * 0.7;
        const Position at{label.landmark.x + direction.x * radius, label.landmark.y + direction.y * radius};
        const double left = at.x - label.width * (1 - direction.x) / 2;
        const double top = at.y - label.height * (1 - direction.y) / 2;
        return {left, top, left + label.width, top + label.height};
    }

    bool is_free(std::size_t own, const Box& box) const {
        const Box room = grown(box, around_.clearance);
        if (!contains(around_.page, room)) return false;
        if (std::ranges::any_of(labels_, [&](const Label& label) { return contains(room, label.landmark); }))
            return false;
        if (std::ranges::any_of(around_.obstacles, [&](const Box& other) { return overlap(room, other); }))
            return false;
        for (std::size_t i = 0; i < placed_.size(); ++i)
            if (i != own && placed_[i] && overlap(room, placed_[i]->box)) return false;
        return true;
    }

    double cost(std::size_t own, const PlacedLabel& place, std::size_t direction, int ring) const {
        constexpr double a_step_farther = 3, a_direction_on = 0.15, on_ink = 1.2, through_a_label = 12, past_a_dot = 4;
        double sum = ring * a_step_farther + static_cast<double>(direction) * a_direction_on;
        for (const Position& p : around_.ink) sum += contains(place.box, p) ? on_ink : 0;
        for (std::size_t i = 0; i < placed_.size(); ++i) {
            if (i == own) continue;
            const Position from = labels_[own].landmark;
            // A leader keeps clear of other names and dots, and a name of other leaders.
            if (place.leader) {
                if (placed_[i] && meets(from, *place.leader, placed_[i]->box)) sum += through_a_label;
                const Position dot = labels_[i].landmark;
                const double c = around_.clearance;
                if (meets(from, *place.leader, {dot.x - c, dot.y - c, dot.x + c, dot.y + c})) sum += past_a_dot;
            }
            if (placed_[i] && placed_[i]->leader && meets(labels_[i].landmark, *placed_[i]->leader, place.box)) {
                sum += through_a_label;
            }
        }
        return sum;
    }

    std::optional<PlacedLabel> best_place(std::size_t own) const {
        const Label& label = labels_[own];
        std::optional<PlacedLabel> best;
        double least = 0;
        for (int ring = 0; ring < rings && (ring < near_rings || !best); ++ring)
            for (std::size_t i = 0; i < std::size(directions); ++i) {
                PlacedLabel place{box_at(label, directions[i], ring), {}};
                if (!is_free(own, place.box)) continue;
                if (ring > 0) place.leader = nearest_in(place.box, label.landmark);
                const double price = cost(own, place, i, ring);
                if (best && price >= least) continue;
                best = place;
                least = price;
            }
        return best;
    }

    std::span<const Label> labels_;
    const LabelSurroundings& around_;
    std::vector<std::optional<PlacedLabel>> placed_;
};

}  // namespace

bool overlap(const Box& a, const Box& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

std::vector<std::optional<PlacedLabel>> placed_labels(std::span<const Label> labels,
                                                      const LabelSurroundings& surroundings) {
    return Placer(labels, surroundings).places();
}

}  // namespace cephtool
