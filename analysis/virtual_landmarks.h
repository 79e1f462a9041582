// Which virtual landmarks are resolved, and which refer to themselves.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

namespace tool {

// The landmarks are nodes, references between them edges; a circle is a strongly connected component with an edge of
// its own. All its members fail, wherever the walk came in (Tarjan, SIAM J Comput 1972;1:146-160).
template <class Point>
class VirtualLandmarks {
 public:
    explicit VirtualLandmarks(int count) : nodes_(count) {}

    // Landmark `from` (-1: none) refers to `to`. The position of `to` when it is known, (0, 0) when it failed or is
    // still open; nothing when it has to be resolved first.
    std::optional<Point> refer(int from, int to) {
        Node& node = nodes_[to];
        switch (node.state) {
            case State::unseen: return std::nullopt;
            case State::resolved: return node.point;
            case State::failed: return Point();
            case State::open: break;
        }
        reach_back(from, node.finished ? node.lowest : node.order);
        if (!node.finished) node.in_circle = true;
        return Point();
    }

    void begin(int index) {
        Node& node = nodes_[index];
        node.state = State::open;
        node.order = node.lowest = ++visits_;
        open_.push_back(index);
    }
    // `found` is false when the construction holds no point.
    void finish(int index, Point point, bool found) {
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

    // After finish: whether the landmark has a position.
    bool resolved(int node) const { return nodes_[node].state == State::resolved; }

 private:
    enum class State : unsigned char { unseen, open, resolved, failed };
    struct Node {
        State state = State::unseen;
        bool finished = false, found = false, in_circle = false;
        int order = 0, lowest = 0;  // order of visit; the lowest order that can be reached back
        Point point{};
    };
    void reach_back(int from, int order) {
        if (from >= 0) nodes_[from].lowest = std::min(nodes_[from].lowest, order);
    }

    std::vector<Node> nodes_;
    std::vector<int> open_;
    int visits_ = 0;
};

}  // namespace tool
