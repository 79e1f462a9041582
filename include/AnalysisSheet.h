// Addition of this project: one analysis definition file loaded once and evaluated for any number of records.
// Gives bit for bit what CCephCalc::Calc_1 and Get_MeanSD give for the same file and decimals of casts. After
// construction a sheet never changes, so any number of threads may share it; the file is read when it is made. No
// exception leaves it.
#pragma once

#include <memory>
#include <vector>

#include "Records.h"
#include "framework/export.h"
#include "framework/text.h"

class AnalysisSheet;

namespace tool {
struct SheetBody;
const SheetBody* body_of(const AnalysisSheet& sheet);
}  // namespace tool

// Whose landmarks are measured, as in the calls of CCephCalc. Nothing is kept or changed of what the pointers lead to.
struct SheetSubject {
    void* record = nullptr;            // of the sheet's kind: tagPOINTLAT, tagPOINTPA or tagPOINTMO
    unsigned short* kCount = nullptr;  // how many virtual landmarks there are; null: none
    tagKPOINT* kPoints = nullptr;
    unsigned short* uCount = nullptr;  // how many of the record's user landmarks there are; null: none
    tagUPOINT* uPoints = nullptr;      // not used: the record has their names
    int sex = 0;                       // 1 male, any other value female
    // band mod 100: first-set norm column; band / 100: second-set norm column. A sheet does not choose it: the
    // patient's place in Stages() is the column. Below 0: it is not known, and norms that differ from column to column
    // are none.
    int band = -1;
    // Steps of the record's coordinates a pixel, at least 1. A record has whole coordinates only; one in 1/64 pixel has
    // 64 here and a Scale of mm a step. "AngleBisector" counts in pixels, whatever the steps.
    int steps = 1;
};

// A line of the file's item sections.
struct SheetItem {
    CString name;
    CString expression;    // without its type suffix, with alternatives; of the first line so named
    CString unit;          // "deg", "mm", "%", "SD" or "" (no unit, or none that can be told), read off the formula
    int column = 0;        // result-list column 0..2
    int mode = 0;          // row mark 0..3: bit 0, the norm is shown; bit 1, the row is set off from the others
    bool second = false;   // stands in a "Calc2:" section
    bool heading = false;  // a line without "=": no item, but the heading of those below it
    CString sign;          // what a positive value means, as the file's "Param:" section says; "" when it does not
    CString japanese;      // the Japanese name, as it says; likewise
    CString unverified;    // why its norm is to be doubted: nobody saw the source; "" for a norm that was seen
};

// How old, in completed years, the people were that the norms were taken from, both ends included.
struct SheetAges {
    bool known = false;
    int from = 0;
    int to = -1;  // -1: open above
};

// A stage that chooses the norms' column: its place in the list is the column. Ranges end before `to`.
struct SheetStage {
    CString name;
    bool byAge = true;        // in years; else dental stages as GetDentalAge numbers them
    double from = 0, to = 0;  // one that ends where it begins is chosen for nobody
    bool operator==(const SheetStage&) const = default;
};

// What an item comes to for one subject.
struct SheetRow {
    double value = 0;                       // mm, degrees, percent or SD, as the item's unit says
    bool has_mean = false, has_sd = false;  // a numeric norm exists
    double mean = 0, sd = 0;
    double deviation = 0;  // (value - mean) / sd; 0 without mean or with SD 0
    bool is_text = false;  // a text was selected of the item's alternatives; value is then 0
    CString text;          // that text, without its quotes

    // The value, or a norm, was made from norms that differ from column to column, and the band is not known.
    bool needs_band = false, norm_needs_band = false;
    // What makes the value meaningless although no landmark is missing, by the names in the formula: two points at one
    // place where a line or an angle needs two ("U1R", "U1"), or two parallel lines that should cross ("PNS-ANS",
    // "Go-Me"). The value is the engine's all the same.
    bool at_one_place = false, parallel = false;
    CString degenerate[2];
};

// What of an item is asked for.
enum class SheetPart { value, mean, sd };

class TOOL_API AnalysisSheet {
 public:
    // How many decimals the measures of casts are rounded to: 0, 1 or 2, and 9 for steps of 0.5.
    static constexpr int usual_cast_decimals = 2;

    // Reads the definition file at `path` (code page 932). An unreadable one leaves an empty sheet, as does a lack of
    // memory; a sheet that was moved from is empty, too. The host's settings are not asked.
    AnalysisSheet(int kind, const char* path, int cast_decimals = usual_cast_decimals);
    // The same from `size` bytes in memory, which are copied.
    AnalysisSheet(int kind, const char* text, std::size_t size, int cast_decimals = usual_cast_decimals);
    AnalysisSheet(AnalysisSheet&&) noexcept;
    AnalysisSheet& operator=(AnalysisSheet&&) noexcept;
    ~AnalysisSheet();

    bool IsLoaded() const;    // the file could be read
    int Kind() const;         // as it was given
    CString Title() const;    // "" without one
    CString Comment() const;  // the line behind "Comment:"; "" without one
    SheetAges Ages() const;   // the line "Ages=" of "Param:"
    // Whose norms they are, and the file that these are norms of another population for: the lines "Population=" and
    // "Variant of=" of "Param:"; "" without them.
    CString Population() const;
    CString VariantOf() const;
    // The Japanese name that "Param:" gives an item, a heading, a stage or the text of a finding; "" without one.
    CString Japanese(const char* name) const;
    // Stages of the first or second set for a sex (1 male, else female), in the order of the file.
    std::vector<SheetStage> Stages(int sex, bool second) const;

    // Items in the order of the file. An index outside 0 .. GetCount() - 1 gives an empty item or row. Without the
    // memory that it takes a row's value is NaN, an item empty.
    int GetCount() const;
    SheetItem GetItem(int index) const;
    SheetRow Evaluate(int index, const SheetSubject& subject) const;

    // As the calls of the same name of CCephCalc, except that a band below 0 is not known.
    double Calc_1(int mode, const char* name, const SheetSubject& subject, double scale, double* valueOut,
                  double* sdOut) const;
    CString Get_MeanSD(const char* name, int which, const SheetSubject& subject, double scale, int keepDecimals) const;

    // Landmarks that a part of an item needs and the subject lacks (unknown, or at the empty point (0, 0)), each once,
    // in the order met; items, norms and virtual landmarks that it refers to are followed. Empty: nothing is missing.
    // What can't be told for lack of memory is one landmark without a name.
    CStringArray Missing(int index, SheetPart part, const SheetSubject& subject) const;

 private:
    friend class SheetSet;
    friend const tool::SheetBody* tool::body_of(const AnalysisSheet& sheet);
    int kind_;
    std::shared_ptr<const tool::SheetBody> body_;  // null: not loaded
};
