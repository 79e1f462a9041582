// A walk over a graph that may have circles, as references among items and norms have.
#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

namespace tool {

// Calls enter(node, reach) for each of `count` nodes that its roots lead to, in which reach(other) says where the node
// leads, then leave(node), behind all that it leads to but for nodes that lead back to it: enter is told of those by
// reach giving true.
template <class Roots, class Enter, class Leave>
void walk(std::size_t count, const Roots& roots, const Enter& enter, const Leave& leave) {
    enum : char { unseen, open, done };
    std::vector<char> states(count, unseen);
    struct Visit {
        std::size_t node;
        bool leaving;
    };
    std::vector<Visit> visits;
    for (const std::size_t root : roots) {
        visits.push_back({root, false});
        while (!visits.empty()) {
            const Visit visit = visits.back();
            visits.pop_back();
            if (visit.leaving) {
                states[visit.node] = done;
                leave(visit.node);
            } else if (states[visit.node] == unseen) {
                states[visit.node] = open;
                visits.push_back({visit.node, true});
                enter(visit.node, [&](std::size_t other) {
                    if (states[other] == unseen) visits.push_back({other, false});
                    return states[other] == open;
                });
            }
        }
    }
}

// The same with each node as a root.
template <class Enter, class Leave>
void walk_all(std::size_t count, const Enter& enter, const Leave& leave) {
    std::vector<std::size_t> nodes(count);
    std::iota(nodes.begin(), nodes.end(), std::size_t{0});
    walk(count, nodes, enter, leave);
}

}  // namespace tool
