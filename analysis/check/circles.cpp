#include "analysis/check/circles.h"

#include "analysis/virtual_landmarks.h"

namespace tool {
namespace {

// The graph of the items and norms that refer to anything, as one sex sees it.
class ReferenceGraph {
 public:
    ReferenceGraph(const DefinitionFile& file, const References& references, int sex)
        : file_(file), references_(references), sex_(sex) {
        for (const auto& [line, found] : references) {
            node_of_.emplace(line, static_cast<int>(lines_.size()));
            lines_.push_back(line);
        }
    }

    // Walks as the evaluator does, with what also tells circles of virtual landmarks apart.
    void check(Findings& findings) {
        VirtualLandmarks<Vec2> walk(static_cast<int>(lines_.size()));
        std::vector<Step> way;
        const auto enter = [&](int node) {
            walk.begin(node);
            way.push_back({node, targets_of(lines_[node])});
        };
        for (int start = 0; start < static_cast<int>(lines_.size()); ++start) {
            if (walk.refer(-1, start)) continue;
            enter(start);
            while (!way.empty()) {
                Step& step = way.back();
                if (step.next == step.targets.size()) {
                    walk.finish(step.node, {}, true);
                    way.pop_back();
                } else if (const int target = step.targets[step.next]; walk.refer(step.node, target)) {
                    ++step.next;
                } else {
                    enter(target);
                }
            }
        }
        for (const auto& [line, node] : node_of_)
            if (!walk.resolved(node))
                findings.fault({line, 1},
                               "this refers to itself, perhaps through other items, and what is met again counts as 0; "
                               "refer to something else");
    }

 private:
    struct Step {
        int node;
        std::vector<int> targets;
        std::size_t next = 0;
    };

    std::vector<int> targets_of(const char* line) const {
        std::vector<int> targets;
        const auto add = [&](const std::optional<NamedLine>& target) {
            if (!target) return;
            if (const auto node = node_of_.find(target->name.data()); node != node_of_.end())
                targets.push_back(node->second);
        };
        for (const Reference& reference : references_.at(line)) {
            const DefinitionFile::Lines lines = file_.find(reference.name, DefinitionFile::Look::both, sex_);
            const bool deviation = reference.ask == Ask::deviation;
            if (deviation || reference.ask == Ask::value) add(lines.item);
            if (deviation || reference.ask == Ask::mean) add(lines.mean);
            if (deviation || reference.ask == Ask::sd) add(lines.sd);
        }
        return targets;
    }

    const DefinitionFile& file_;
    const References& references_;
    int sex_;
    std::vector<const char*> lines_;
    std::unordered_map<const char*, int> node_of_;
};

}  // namespace

void check_circles(const DefinitionFile& file, const References& references, Findings& findings) {
    for (const int sex : {1, 2}) ReferenceGraph(file, references, sex).check(findings);
}

}  // namespace tool
