// Which virtual landmarks are resolved, and which refer to themselves.
#pragma once

#include <optional>
#include <vector>

#include "geometry/vec2.h"

namespace tool {

// The landmarks are nodes, references between them edges; a circle is a strongly connected component with an edge of
// its own. All its members fail, wherever the walk came in (Tarjan, SIAM J Comput 1972;1:146-160).
class VirtualLandmarks {
 public:
    explicit VirtualLandmarks(int count) : nodes_(count) {}

    // Landmark `from` (-1: none) refers to `to`. The position of `to` when it is known, (0, 0) when it failed or is
    // still open; nothing when it has to be resolved first.
    std::optional<Vec2> refer(int from, int to);

    void begin(int node);
    // `found` is false when the construction holds no point.
    void finish(int node, Vec2 point, bool found);

    // After finish: whether the landmark has a position.
    bool resolved(int node) const { return nodes_[node].state == State::resolved; }

 private:
    enum class State : unsigned char { unseen, open, resolved, failed };
    struct Node {
        State state = State::unseen;
        bool finished = false, found = false, in_circle = false;
        int order = 0, lowest = 0;  // order of visit; the lowest order that can be reached back
        Vec2 point;
    };
    void reach_back(int from, int order);

    std::vector<Node> nodes_;
    std::vector<int> open_;
    int visits_ = 0;
};

}  // namespace tool
