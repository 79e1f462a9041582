// Addition of this project: any number of sheets, measured together for record after record. Gives bit for
// bit what AnalysisSheet::Evaluate and Missing give, sooner: what items have in common, also those of different sheets,
// is computed once for a record, and nothing is allocated for it. No exception leaves it.
#pragma once

#include <memory>
#include <vector>

#include "AnalysisSheet.h"
#include "LandmarkErrors.h"
#include "framework/export.h"
#include "framework/text.h"

namespace tool {
class SheetRun;
}

// Sheets made ready to be measured together. Never changes, so any number of threads may share it.
class TOOL_API SheetSet {
 public:
    // Sheets for the same records, numbered from 0 in this order: of one kind, or of those that share a record (0, 10
    // and 20; 1 and 11). Others, and null, are empty sheets here. Casts' decimals are those of the first one.
    // The sheets need not outlive the set.
    explicit SheetSet(const std::vector<const AnalysisSheet*>& sheets);
    explicit SheetSet(const AnalysisSheet& sheet);
    SheetSet(SheetSet&&) noexcept;
    SheetSet& operator=(SheetSet&&) noexcept;
    ~SheetSet();

 private:
    friend class SheetMeasurer;
    struct Body;
    std::unique_ptr<const Body> body_;
};

// For one thread.
class TOOL_API SheetMeasurer {
 public:
    // The set must outlive the measurer.
    explicit SheetMeasurer(const SheetSet& set);
    SheetMeasurer(SheetMeasurer&&) noexcept;
    SheetMeasurer& operator=(SheetMeasurer&&) noexcept;
    ~SheetMeasurer();

    // Whose landmarks are measured from here on. What the subject leads to stays in place and unchanged until the next
    // call; after a change, call it again. The subject's sex and band are not used.
    void Measure(const SheetSubject& subject);

    // Of an item of a sheet as AnalysisSheet has it, for a sex and band. Empty for numbers outside the set or sheet.
    // Before the first Measure, and without the memory that it takes, a value is NaN and all is missing.
    SheetRow Evaluate(int sheet, int index, int sex, int band);
    CStringArray Missing(int sheet, int index, SheetPart part, int sex, int band);
    // The standard error of the value that Evaluate gives, when landmarks have the errors that SetErrors was told; of
    // what has no number, or for numbers outside, it is not derived.
    void SetErrors(const tool::LandmarkErrors& errors);
    SheetError Error(int sheet, int index, int sex, int band);
    // Whether anything is missing.
    bool Lacks(int sheet, int index, SheetPart part, int sex, int band);

 private:
    friend class ResultList;
    tool::SheetRun* run() const;  // of the subject; null when it is not measured
    struct Body;
    std::unique_ptr<Body> body_;
    bool measured_ = false;
};
