// One film or cast that is being measured: its case, the analyses chosen, and what they come to.
#pragma once

#include <MeasuredAnalysis.h>
#include <SheetMeasurer.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "results/measurement.h"
#include "tracing/landmark_outliers.h"
#include "tracing/landmark_suggestion.h"
#include "web/engine/json.h"

namespace engine {

// What a row shows: a ResultState, or this.
inline constexpr auto no_scale = static_cast<ResultState>(10);

// One entry a row, NaN where there is none.
struct Numbers {
    std::vector<double> value, mean, sd, deviation;
    std::vector<std::uint8_t> state;
};

class Session {
 public:
    explicit Session(cephtool::Case record);

    const cephtool::Case& record() const { return record_; }
    // Throws an Error when it is of another kind.
    void set_record(cephtool::Case record);
    // Throws an Error for a name that no landmark can have, and a place that none can have.
    void place(const std::string& name, cephtool::Position at);
    void remove(const std::string& name);
    // Throws an Error for what is no scale.
    void set_scale(std::optional<double> mm_per_pixel);

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
    // What a text item of the row found, as it is shown.
    std::string verdict(std::size_t row, const CString& text, const cephtool::Texts& texts) const;
    struct Measurers {
        explicit Measurers(const SheetSet& set) : his(set), hers(set) {}
        SheetMeasurer his, hers;
    };

    void changed() { is_measured_ = false; }
    std::vector<std::string> missing(std::size_t row, SheetPart part);
    void find_bands();
    void measure_at(double mm_per_pixel, std::vector<ResultNumbers>& found);
    std::size_t row_count() const { return rows_.size(); }
    const tool::Item& item_of(std::size_t row) const {
        return chosen_[rows_[row].analysis]->items()[static_cast<std::size_t>(rows_[row].item)];
    }

    cephtool::Case record_;
    std::vector<const cephtool::Analysis*> chosen_;
    struct Row {
        std::size_t analysis;
        int item;
    };
    std::vector<Row> rows_;
    std::optional<SheetSet> sheets_;
    std::optional<Measurers> measurers_;
    std::vector<cephtool::NormBand> bands_;       // of the chosen; empty: to be found
    std::optional<tool::SubjectRecord> subject_;  // that was measured
    std::vector<ResultNumbers> found_, at_other_scale_;
    Numbers numbers_;
    std::optional<cephtool::LandmarkOutliers> outliers_;
    bool norms_differ_ = false;
    bool is_measured_ = false;
};

}  // namespace engine
