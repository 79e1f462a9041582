#include "analysis/virtual_landmarks.h"

#include <algorithm>

namespace tool {

void VirtualLandmarks::reach_back(int from, int order) {
    if (from >= 0) nodes_[from].lowest = std::min(nodes_[from].lowest, order);
}

std::optional<Vec2> VirtualLandmarks::refer(int from, int to) {
    Node& node = nodes_[to];
    switch (node.state) {
        case State::unseen: return std::nullopt;
        case State::resolved: return node.point;
        case State::failed: return Vec2();
        case State::open: break;
    }
    reach_back(from, node.finished ? node.lowest : node.order);
    if (!node.finished) node.in_circle = true;
    return Vec2();
}

void VirtualLandmarks::begin(int index) {
    Node& node = nodes_[index];
    node.state = State::open;
    node.order = node.lowest = ++visits_;
    open_.push_back(index);
}

void VirtualLandmarks::finish(int index, Vec2 point, bool found) {
    Node& node = nodes_[index];
    node.point = point;
    node.found = found;
    node.finished = true;
    if (node.lowest < node.order) return;  // belongs to the circle of a landmark that is still being resolved
    for (int member = -1; member != index;) {
        member = open_.back();
        open_.pop_back();
        const bool alone = member == index && !node.in_circle;
        nodes_[member].state = alone && found ? State::resolved : State::failed;
    }
}

}  // namespace tool
