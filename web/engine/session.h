// One film or cast that is being measured: its case, the analyses chosen, and what they come to.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tracing/landmark_outliers.h"
#include "tracing/landmark_suggestion.h"
#include "web/engine/measured_rows.h"

namespace engine {

class Session {
 public:
    explicit Session(cephtool::Case record);

    const cephtool::Case& record() const { return record_; }
    // Throws an Error when it is of another kind.
    void set_record(cephtool::Case record);
    // Throws an Error for a name that no landmark can have, and a place that none can have.
    void place(const std::string& name, cephtool::Position at);
    void remove(const std::string& name);

    // Their folders must stay open. Throws an Error for one of another kind.
    void choose(std::vector<const cephtool::Analysis*> analyses);
    // A row for each item, analysis by analysis. Nothing is done when nothing changed.
    const Numbers& measure();

    // Of these rows, or of all.
    Json texts(const std::vector<int>& rows, const cephtool::Texts& texts);
    // Of these rows, or of all: the standard errors of their values, as "analyze --error" has them. Without a scale
    // there are none, since those of landmarks are in mm.
    Json errors(const std::vector<int>& rows, const cephtool::Texts& texts) const;
    // Landmarks that lie where the others do not expect them.
    Json outliers(const cephtool::Texts& texts);
    Json remarks(const cephtool::Texts& texts);
    Json norms(const cephtool::Texts& texts);
    Json shapes(int row) const;

    std::optional<cephtool::Position> construct(const std::string& expression) const;
    // The case's virtual landmarks, those that can be made.
    Json constructed() const;
    std::optional<cephtool::Position> suggest(const std::string& name) const;

    // With this scale where it has none.
    cephtool::Case scaled_record(double mm_per_pixel) const;

 private:
    cephtool::Case record_;
    std::unique_ptr<MeasuredRows> rows_;  // of the analyses that are chosen
    std::optional<cephtool::LandmarkOutliers> outliers_;
};

}  // namespace engine
