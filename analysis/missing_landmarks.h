// The landmarks that items and norms need and a subject lacks.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "analysis/evaluation.h"
#include "analysis/formula_names.h"

namespace tool {

// Of one subject. What was found out for one item is kept for those that refer to it.
class MissingLandmarks : private FormulaNames {
 public:
    // `evaluation` chooses the alternatives, over the same landmarks, sex and band.
    MissingLandmarks(const DefinitionFile& file, Evaluation& evaluation, int sex, int band)
        : file_(file), evaluation_(evaluation), sex_(sex), band_(band) {}

    // Unknown names and those at the empty point, each once: first what the formula names itself, then what that leads
    // to. Items, norms and virtual landmarks that it refers to are followed, of alternatives only the selected one.
    std::vector<std::string> for_item(std::string_view name);
    std::vector<std::string> for_norm(std::string_view item, NormPart part);

 private:
    // An item's or a norm's line.
    struct Node {
        NamedLine line;
        bool is_norm = false, is_read = false;
        bool complete = false;  // nothing is missing, wherever it leads
        int walk = 0;           // the last walk that came by
        std::vector<std::string> lacks;
        std::vector<std::size_t> leads_to;
    };

    std::vector<std::string> found_from(const std::optional<NamedLine>& line, bool is_norm);
    std::size_t node_of(const NamedLine& line, bool is_norm);
    void read(std::size_t node);
    void lead_to(const std::optional<NamedLine>& line, bool is_norm);
    void lack(std::string_view name);
    Landmarks& landmarks() { return evaluation_.points().arithmetic(); }

    void landmark(std::string_view name) override;
    void cast_measure(std::string_view token) override;
    void reference(Ask ask, std::string_view item) override;

    const DefinitionFile& file_;
    Evaluation& evaluation_;
    int sex_, band_;
    std::vector<Node> nodes_;
    std::unordered_map<const char*, std::size_t> node_of_;
    int walks_ = 0;

    // Of the line that is being read.
    std::vector<std::string> lacks_;
    std::vector<std::size_t> leads_to_;
    std::vector<const tagKPOINT*> virtuals_;
    std::unordered_set<const char*> met_virtuals_;
};

}  // namespace tool
