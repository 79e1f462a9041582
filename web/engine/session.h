// One film or cast that is being measured: its case, the analyses chosen, and what they come to.
#pragma once

#include <SheetMeasurer.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "results/measurement.h"
#include "tracing/landmark_suggestion.h"
#include "web/engine/json.h"

namespace engine {

// What a row shows: a ResultState, or this.
inline constexpr std::uint8_t no_scale = 10;

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
    struct Measurers {
        explicit Measurers(const SheetSet& set) : his(set), hers(set) {}
        SheetMeasurer his, hers;
    };

    void changed() {
        result_.reset();
        is_measured_ = false;
    }
    void find_bands();
    void measure_at(double mm_per_pixel, Numbers& numbers, std::vector<std::string>& words);
    const cephtool::CaseResult& result();
    std::size_t row_count() const { return rows_.size(); }

    cephtool::Case record_;
    std::vector<const cephtool::Analysis*> chosen_;
    struct Row {
        std::size_t analysis;
        int item;
    };
    std::vector<Row> rows_;
    std::optional<SheetSet> sheets_;
    std::optional<Measurers> measurers_;
    std::vector<int> bands_;  // of the chosen; empty: to be found
    Numbers numbers_, at_other_scale_;
    std::vector<std::string> words_, words_at_other_scale_;  // of text items
    bool is_measured_ = false;
    std::optional<cephtool::CaseResult> result_;
};

}  // namespace engine
