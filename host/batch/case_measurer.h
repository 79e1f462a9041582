// Measures case after case, for one thread. Gives the numbers that `measured` gives, without its words.
#pragma once

#include <ResultList.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "cases/case_record.h"
#include "host/batch/batch_columns.h"

namespace cephtool {

struct BatchItem {
    std::optional<double> value = {}, mean = {}, sd = {}, deviation = {};
    std::string_view text = {};  // the verdict of an item that has one in place of a value
    std::optional<double> error = {}, deviation_error = {};
    std::string_view mostly = {};   // the landmark that the error is mostly owed to
    std::string_view assumed = {};  // landmarks whose error is assumed
    bool has_no_norms = false;      // takes one column: whose norms an analysis has
};

struct MeasuredCase {
    std::vector<BatchItem> items;      // one for each item that has columns, in their order
    std::vector<std::string> remarks;  // their codes: "mirrored", and of one analysis "Steiner:band_given"
    std::optional<int> months;         // completed ones of age
};

class CaseMeasurer {
 public:
    // `columns` must outlive this object, and can be shared.
    // `errors`, null for none, must, too.
    CaseMeasurer(const BatchColumns& columns, std::optional<int> band, const tool::LandmarkErrors* errors = nullptr)
        : columns_(columns), band_(band), errors_(errors) {}

    // Items of analyses for other kinds of cases are empty. Valid until the next call.
    const MeasuredCase& measure(const Case& record);

 private:
    // Which norms of an analysis are a person's is found out once for all cases alike.
    struct Norms {
        const BatchAnalysis::Variant* variant = nullptr;  // where another sheet has the norms
        int band = 0;
        std::string population;
        std::vector<std::string> remarks;  // codes, behind the analysis' name
    };

    bool with_norms() const { return columns_.parts.norms || columns_.parts.deviations; }
    const std::vector<Norms>& norms_of(const Case& record, std::optional<int> months);
    ResultNumbers numbers(const BatchAnalysis::Item& item, int sheet, SheetMeasurer& sheets, Sex sex, int band,
                          bool norms);
    void add_error(BatchItem& item, const SheetError& error);
    std::string_view verdict(const CString& text);

    const BatchColumns& columns_;
    std::optional<int> band_;
    const tool::LandmarkErrors* errors_;
    MeasuredCase measured_;
    std::optional<SheetMeasurer> sheets_[std::size(all_kinds)];

    // … months, dental stage, population
    using Grown = std::tuple<Kind, std::optional<Sex>, std::optional<int>, std::string, std::string>;
    std::map<Grown, std::vector<Norms>> known_norms_;
    std::map<std::string, std::string, std::less<>> verdicts_;  // as people read them; the analyses have some hundreds
};

}  // namespace cephtool
