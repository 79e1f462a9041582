#include "analysis/missing_landmarks.h"

#include <algorithm>
#include <cstring>

#include "analysis/cast_measures.h"
#include "analysis/cast_points.h"
#include "analysis/item_text.h"
#include "util/decimal_text.h"

namespace tool {
namespace {

template <std::size_t size>
std::string_view text_in(const char (&field)[size]) {
    return {field, strnlen(field, size)};
}

}  // namespace

std::vector<std::string> MissingLandmarks::for_item(std::string_view name) {
    return found_from(file_.find_item(name), false);
}

std::vector<std::string> MissingLandmarks::for_norm(std::string_view item, NormPart part) {
    const DefinitionFile::Lines lines = file_.find(item, DefinitionFile::Look::norms, sex_);
    return found_from(part == NormPart::mean ? lines.mean : lines.sd, true);
}

std::vector<std::string> MissingLandmarks::found_from(const std::optional<NamedLine>& line, bool is_norm) {
    std::vector<std::string> missing;
    if (!line) return missing;
    std::unordered_set<std::string_view> names;
    std::vector<std::size_t> way;
    const auto come_by = [&](std::size_t node) {
        if (nodes_[node].complete || nodes_[node].walk == walks_) return;
        nodes_[node].walk = walks_;
        way.push_back(node);
    };
    ++walks_;
    come_by(node_of(*line, is_norm));
    for (std::size_t next = 0; next < way.size(); ++next) {
        read(way[next]);
        const Node& node = nodes_[way[next]];
        for (const std::string& name : node.lacks)
            if (names.insert(name).second) missing.push_back(name);
        for (const std::size_t other : node.leads_to) come_by(other);
    }
    if (missing.empty())
        for (const std::size_t node : way) nodes_[node].complete = true;
    return missing;
}

std::size_t MissingLandmarks::node_of(const NamedLine& line, bool is_norm) {
    const auto [entry, is_new] = node_of_.try_emplace(line.name.data(), nodes_.size());
    if (is_new) nodes_.push_back({line, is_norm, {}, {}, {}, {}, {}});
    return entry->second;
}

void MissingLandmarks::read(std::size_t node) {
    if (nodes_[node].is_read) return;
    lacks_.clear();
    leads_to_.clear();
    met_virtuals_.clear();
    const NamedLine line = nodes_[node].line;
    if (nodes_[node].is_norm) {
        const std::string_view norm = norm_of_band(line.rest, line.second_set(), band_);
        if (!is_number(norm)) visit_names(norm, *this);
    } else {
        const std::string_view text = split_type(line.rest).expression;
        const std::size_t semicolon = text.find(';');
        visit_names(text.substr(0, semicolon), *this);
        if (lacks_.empty() && semicolon != std::string_view::npos) {
            const auto result = evaluation_.item(line.name, Ask::value);
            if (result && !result->is_text) visit_names(result->alternative, *this);
        }
    }
    Node& done = nodes_[node];
    done.lacks = std::move(lacks_);
    done.leads_to = std::move(leads_to_);
    done.is_read = true;
}

void MissingLandmarks::lead_to(const std::optional<NamedLine>& line, bool is_norm) {
    if (line) leads_to_.push_back(node_of(*line, is_norm));
}

void MissingLandmarks::lack(std::string_view name) {
    if (std::ranges::find(lacks_, name) == lacks_.end()) lacks_.emplace_back(name);
}

void MissingLandmarks::landmark(std::string_view name) {
    const Landmarks::Found found = landmarks().find(name);
    if (found.source == Landmarks::Source::virtually) {
        const tagKPOINT& landmark = landmarks().virtual_landmark(found.slot);
        if (!met_virtuals_.insert(landmark.Construction).second) return;
        virtuals_.push_back(&landmark);
        if (virtuals_.size() > 1) return;  // the outer call works them off
        const std::size_t before = lacks_.size();
        for (std::size_t next = 0; next < virtuals_.size(); ++next)
            visit_names(text_in(virtuals_[next]->Construction), *this);
        // A circle, or lines that do not cross, has all that it needs and gives no point.
        for (const tagKPOINT* made : virtuals_)
            if (lacks_.size() == before && evaluation_.points().landmark(text_in(made->Name)) == Vec2())
                lack(text_in(made->Name));
        virtuals_.clear();
    } else if (landmarks().position(found) == Vec2()) {
        lack(name);
    }
}

void MissingLandmarks::cast_measure(std::string_view token) {
    tagPOINTMO* const cast = landmarks().cast();
    for (const int slot : points_of_measure(token))
        if (!cast || cast_point(*cast, slot) == CPoint()) lack(cast_point_name(slot));
}

void MissingLandmarks::reference(Ask ask, std::string_view item) {
    const bool deviation = ask == Ask::deviation;
    const DefinitionFile::Lines lines = file_.find(item, DefinitionFile::Look::both, sex_);
    if (deviation || ask == Ask::value) lead_to(lines.item, false);
    if (deviation || ask == Ask::mean) lead_to(lines.mean, true);
    if (deviation || ask == Ask::sd) lead_to(lines.sd, true);
}

}  // namespace tool
