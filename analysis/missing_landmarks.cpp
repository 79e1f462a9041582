#include "analysis/missing_landmarks.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "analysis/cast_measures.h"
#include "analysis/cast_points.h"
#include "analysis/formula_names.h"
#include "analysis/item_text.h"
#include "util/decimal_text.h"

namespace tool {
namespace {

template <std::size_t size>
std::string_view text_in(const char (&field)[size]) {
    return {field, strnlen(field, size)};
}

class Search : public FormulaNames {
 public:
    Search(const DefinitionFile& file, Landmarks& landmarks, int sex, int band)
        : file_(file),
          landmarks_(landmarks),
          sex_(sex),
          band_(band),
          evaluation_([&file] { return &file; }, landmarks, sex, band) {}

    void want_item(std::string_view name) {
        const auto line = file_.find_item(name);
        if (line && seen_.insert(line->name.data()).second) items_.push_back(*line);
    }

    void want_norm(std::string_view name, NormPart part) {
        const DefinitionFile::Lines lines = file_.find(name, DefinitionFile::Look::norms, sex_);
        const auto& line = part == NormPart::mean ? lines.mean : lines.sd;
        if (!line || !seen_.insert(line->name.data()).second) return;
        const std::string_view text = norm_of_band(line->rest, line->second_set(), band_);
        if (!is_number(text)) visit_names(text, *this);
    }

    // Works off what was wanted and what that leads to.
    std::vector<std::string> missing() {
        for (std::size_t next = 0; next < items_.size(); ++next) {
            const NamedLine line = items_[next];
            const std::string_view text = split_type(line.rest).expression;
            const std::size_t before = missing_.size();
            visit_names(text.substr(0, text.find(';')), *this);
            if (missing_.size() > before || text.find(';') == std::string_view::npos) continue;
            const auto result = evaluation_.item(line.name, Ask::value);
            if (result && !result->is_text) visit_names(result->alternative, *this);
        }
        return std::move(missing_);
    }

    void landmark(std::string_view name) override {
        const Landmarks::Found found = landmarks_.find(name);
        if (found.source == Landmarks::Source::virtually) {
            const tagKPOINT& landmark = landmarks_.virtual_landmark(found.slot);
            if (!seen_.insert(landmark.Construction).second) return;
            virtuals_.push_back(&landmark);
            if (virtuals_.size() > 1) return;  // the outer call works them off
            const std::size_t before = missing_.size();
            for (std::size_t next = 0; next < virtuals_.size(); ++next)
                visit_names(text_in(virtuals_[next]->Construction), *this);
            // A circle, or lines that do not cross, has all that it needs and gives no point.
            for (const tagKPOINT* made : virtuals_)
                if (missing_.size() == before && evaluation_.points().landmark(text_in(made->Name)) == Vec2())
                    add(text_in(made->Name));
            virtuals_.clear();
        } else if (landmarks_.position(found) == Vec2()) {
            add(name);
        }
    }

    void cast_measure(std::string_view token) override {
        for (const int slot : points_of_measure(token))
            if (!landmarks_.cast() || cast_point(*landmarks_.cast(), slot) == CPoint()) add(cast_point_name(slot));
    }

    void reference(Ask ask, std::string_view item) override {
        if (ask == Ask::value || ask == Ask::deviation) want_item(item);
        if (ask == Ask::mean || ask == Ask::deviation) want_norm(item, NormPart::mean);
        if (ask == Ask::sd || ask == Ask::deviation) want_norm(item, NormPart::sd);
    }

 private:
    void add(std::string_view name) {
        if (std::ranges::find(missing_, name) == missing_.end()) missing_.emplace_back(name);
    }

    const DefinitionFile& file_;
    Landmarks& landmarks_;
    int sex_, band_;
    Evaluation evaluation_;  // one for all items, so that its limit holds for all of them
    std::set<const char*> seen_;
    std::vector<NamedLine> items_;
    std::vector<const tagKPOINT*> virtuals_;
    std::vector<std::string> missing_;
};

}  // namespace

std::vector<std::string> missing_for_item(std::string_view item, const DefinitionFile& file, Landmarks& landmarks,
                                          int sex, int band) {
    Search search(file, landmarks, sex, band);
    search.want_item(item);
    return search.missing();
}

std::vector<std::string> missing_for_norm(std::string_view item, NormPart part, const DefinitionFile& file,
                                          Landmarks& landmarks, int sex, int band) {
    Search search(file, landmarks, sex, band);
    search.want_norm(item, part);
    return search.missing();
}

}  // namespace tool
