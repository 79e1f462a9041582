// What the chosen analyses come to for a case, a row an item, numbers and words.
#pragma once

#include <MeasuredAnalysis.h>
#include <SheetMeasurer.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "results/measurement.h"
#include "web/engine/chosen_rows.h"
#include "web/engine/json.h"

namespace engine {

// What a row shows: a ResultState, or this.
inline constexpr auto no_scale = static_cast<ResultState>(10);

// One entry a row, NaN where there is none.
struct Numbers {
    std::vector<double> value, mean, sd, deviation;
    std::vector<std::uint8_t> state;
};

// Of a case that every call gives: what was computed of it is kept until `changed` or `changed_patient`.
class MeasuredRows {
 public:
    explicit MeasuredRows(ChosenRows rows);

    const ChosenRows& rows() const { return rows_; }

    // Landmarks or the scale changed; nothing else did.
    void changed() { is_measured_ = false; }
    // Anything may have.
    void changed_patient();

    // Nothing is done when nothing changed.
    const Numbers& measure(const cephtool::Case& record);
    // Whether norms were left out since they differ by a sex that is not known.
    bool norms_differ_by_sex(const cephtool::Case& record);
    // Which norms count, for each analysis.
    const std::vector<cephtool::NormBand>& bands(const cephtool::Case& record);
    // Of these rows, or of all.
    Json texts(const cephtool::Case& record, const std::vector<int>& wanted, const cephtool::Texts& texts);

 private:
    void measure_scaled(const cephtool::Case& record, std::vector<ResultNumbers>& found);
    Json text(const cephtool::Case& record, std::size_t row, const cephtool::Texts& texts);
    // What a text item of the row found, as it is shown.
    std::string verdict(std::size_t row, const CString& text, const cephtool::Texts& texts) const;
    std::vector<std::string> missing(const cephtool::Case& record, std::size_t row);

    ChosenRows rows_;
    SheetSet sheets_;
    SheetMeasurer his_, hers_;
    std::vector<cephtool::NormBand> bands_;       // empty: to be found
    std::optional<tool::SubjectRecord> subject_;  // that was measured
    std::vector<ResultNumbers> found_, at_other_scale_;
    Numbers numbers_;
    bool norms_differ_ = false;
    bool is_measured_ = false;
};

}  // namespace engine
