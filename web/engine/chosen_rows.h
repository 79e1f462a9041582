// The analyses that were chosen, and a row for each of their items, analysis by analysis.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "results/analysis_folder.h"

namespace engine {

class ChosenRows {
 public:
    struct Row {
        std::size_t analysis;
        int item;
    };

    ChosenRows() = default;
    // The analyses' folders must stay open.
    explicit ChosenRows(std::vector<const cephtool::Analysis*> analyses) : analyses_(std::move(analyses)) {
        for (std::size_t i = 0; i < analyses_.size(); ++i)
            for (int item = 0; item < static_cast<int>(analyses_[i]->items().size()); ++item)
                rows_.push_back({i, item});
    }

    const std::vector<const cephtool::Analysis*>& analyses() const { return analyses_; }
    std::size_t count() const { return rows_.size(); }
    const Row& operator[](std::size_t row) const { return rows_[row]; }
    const tool::Item& item(std::size_t row) const {
        return analyses_[rows_[row].analysis]->items()[static_cast<std::size_t>(rows_[row].item)];
    }

    bool has(int row) const { return row >= 0 && static_cast<std::size_t>(row) < count(); }
    // Those of them that there are; of none, all.
    std::vector<std::size_t> wanted(const std::vector<int>& rows) const {
        std::vector<std::size_t> all;
        if (rows.empty())
            for (std::size_t row = 0; row < count(); ++row) all.push_back(row);
        for (const int row : rows)
            if (has(row)) all.push_back(static_cast<std::size_t>(row));
        return all;
    }

 private:
    std::vector<const cephtool::Analysis*> analyses_;
    std::vector<Row> rows_;
};

}  // namespace engine
