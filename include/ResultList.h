// Addition of this project: what a result list shows of one analysis and one subject, row by row, made with an
// AnalysisSheet. CCephCalc::User_Calc, User_Diag and User_CalcSurg fill one from the files of the analysis folder.
#pragma once

#include <optional>
#include <vector>

#include "AnalysisSheet.h"
#include "SheetMeasurer.h"
#include "framework/export.h"
#include "framework/text.h"

// What a row shows.
enum class ResultState {
    heading,          // a line of the file without "=": the heading of the rows below it
    value,            // a number
    text,             // a text item: its selected alternative
    missing,          // landmarks are missing
    no_formula,       // "name=" with nothing behind it
    not_finite,       // the formula divides by 0
    differs_by_sex,   // the sex is not known, and men and women get different results
    at_one_place,     // two points lie at one place where a line or an angle needs two
    parallel,         // two lines that should cross are parallel
    differs_by_band,  // the norms' column is not known, and the result rests on norms that differ
};

// Numbers that a row does not have are 0, texts "". Texts of numbers have the item's decimals, at most two: those of
// its norm, but one at least, and two for items without a unit. From 10 million on they are written as "1.235e+08".
struct ResultRow {
    ResultState state = ResultState::no_formula;
    CString title;
    CString unit;         // as of SheetItem
    int column = 0;       // 0..2: the value column of the list that shows the value
    bool marked = false;  // to be set off from the others (types 10 and up)
    bool second = false;  // of the second set
    CString sign;         // as of SheetItem
    double value = 0;
    bool hasMean = false, hasSd = false, hasDeviation = false;
    double mean = 0, sd = 0;
    double deviation = 0;  // of the value from the mean, in SD
    CString valueText;     // of a text item its text
    // "" also when the item's type (3 to 9, 13 and up) says that its norm is not shown.
    CString meanText, sdText;
    CString deviationText;     // signed, two decimals: "+2.43"
    CString stars;             // one for every whole SD, "*****+" beyond five
    CStringArray missing;      // landmarks that the value needs and the subject lacks
    CStringArray normMissing;  // the same for the norm, which then counts as none
    CString degenerate[2];     // the two points at one place, or the two parallel lines, as the formula has them

    bool HasResult() const { return state == ResultState::value || state == ResultState::text; }
};

// What a row shows, in numbers.
struct ResultNumbers {
    ResultState state = ResultState::missing;
    std::optional<double> value, mean, sd, deviation;
    CString text;  // of a text item
    CString degenerate[2];
    bool norm_needs_band = false;  // the norm rests on the band, which is not known

    bool HasSameNorms(const ResultNumbers& other) const { return mean == other.mean && sd == other.sd; }
};

class TOOL_API ResultList {
 public:
    // An item of a sheet of the measurer's subject, which must have a formula. Norms are left out when they are not
    // wanted.
    static ResultNumbers Numbers(SheetMeasurer& measurer, int sheet, int index, int sex, int band, bool norms = true);
    // What of a man's numbers holds for a woman, too.
    static ResultNumbers Common(const ResultNumbers& his, const ResultNumbers& hers);

    ResultList() = default;
    // The rows in the order of the file. With `sexKnown` false the subject's sex is not used, and what is not the same
    // for men and women is left out. Without the memory that it takes the list is empty.
    ResultList(const AnalysisSheet& sheet, const SheetSubject& subject, bool sexKnown = true);

    CString Title() const { return title_; }
    int GetCount() const { return static_cast<int>(rows_.size()); }
    // An index outside 0 .. GetCount() - 1 gives an empty row.
    const ResultRow& GetRow(int index) const;

    auto begin() const { return rows_.begin(); }
    auto end() const { return rows_.end(); }

    int GetColumnCount() const;                         // value columns in use, 0 to 3
    bool HasResults() const;                            // of any row
    bool NormsDiffer() const { return norms_differ_; }  // some were left out, since the sex is not known

 private:
    void fill(const AnalysisSheet& sheet, const SheetSubject& subject, bool sexKnown);

    CString title_;
    std::vector<ResultRow> rows_;
    bool norms_differ_ = false;
};
