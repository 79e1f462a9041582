// Addition of this project: all items of an analysis measured for one patient, with norms, reasons where there is no
// result, and what was measured on the film. Texts are UTF-8.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Analysis.h"
#include "LandmarkErrors.h"
#include "MeasuredShape.h"
#include "ResultList.h"
#include "framework/export.h"

namespace tool {

// A landmark that was placed: of the kind's table (LandmarkTable.h), or of the host's own. Own names have at most five
// bytes in code page 932, and there are at most 100 of them.
struct PlacedLandmark {
    std::string name;
    FilmPoint at;
    int slot = -1;  // in the kind's table, for hosts that know it: the name is not looked at then. -1: by name
};

// A landmark made of others: "mid([U1],[L1])" (docs/formula_language.md). Names have at most 31 bytes, constructions
// 255.
struct VirtualLandmark {
    std::string name, construction;
};

// A patient with a film or cast.
struct Subject {
    std::vector<PlacedLandmark> landmarks = {};
    std::vector<VirtualLandmark> virtuals = {};
    double mm_per_pixel = 0;
    std::optional<int> palate = {};  // of a cast: the category that was judged
    std::optional<Sex> sex = {};
    std::optional<double> age_years = {};
    std::optional<int> dental_stage = {};  // as dental_stage_named numbers them
    // The code of the norms' columns (SheetSubject), in place of that of the patient's stages.
    std::optional<int> band = {};
};

// A subject as the engine has it. Coordinates are whole pixels, or 1/64 where any of the subject's has a fraction: both
// steps are powers of two, so that lengths and angles keep their bits.
class TOOL_API SubjectRecord {
 public:
    // Nothing with the reason when a name or construction is too long or has no place in code page 932, there are too
    // many, a landmark lies more than a million pixels off, or the scale is not above 0.
    static Result<SubjectRecord> of(Kind kind, const Subject& subject);
    SubjectRecord(SubjectRecord&&) noexcept;
    SubjectRecord& operator=(SubjectRecord&&) noexcept;
    ~SubjectRecord();

    // Valid as long as this object.
    SheetSubject subject(Sex sex, int band);

 private:
    struct Fields;
    explicit SubjectRecord(std::unique_ptr<Fields> fields);
    std::unique_ptr<Fields> fields_;
};

// The standard error of a value, as of SheetError.
struct ValueError {
    ErrorState state = ErrorState::not_derived;
    double value = 0;
    std::optional<double> deviation;  // of the deviation, in SD
    std::string text;                 // of `value`, with the decimals of the value's text
    std::string mostly;
    double share = 0;
    std::vector<std::string> without;
    std::vector<std::string> assumed;  // not empty: the error rests on figures that nobody measured

    // Whether the deviation may as well be 0: its 95 % interval, 1.96 standard errors to each side, covers it.
    TOOL_API bool covers(double of_deviation) const;
};

// The texts are as of ResultRow.
struct MeasuredItem {
    const Item* item = nullptr;  // of the analysis
    ResultState state = ResultState::no_formula;
    std::optional<double> value;  // mm, degrees, percent or SD, as the item's unit says
    std::optional<double> mean, sd;
    std::optional<double> deviation;  // of the value from the mean, in SD
    std::string value_text, mean_text, sd_text, deviation_text, stars;
    std::vector<std::string> missing, norm_missing;
    std::string degenerate[2];
    std::optional<ValueError> error;    // of a value, where errors were asked for
    std::vector<MeasuredShape> shapes;  // in the order in which the formula needs them; of casts none

    bool has_result() const { return state == ResultState::value || state == ResultState::text; }
};

struct MeasuredAnalysis {
    std::vector<MeasuredItem> items;  // one for each of the analysis, headings included
    int band = 0;                     // of the norms; below 0: not known
    bool norms_differ = false;        // some were left out, since the sex is not known
};

// The code of the norms' columns by the patient's stages; -1 when one of them is not known.
TOOL_API int norm_band(const Analysis& analysis, const Subject& subject);

enum class Shapes { left_out, wanted };

// The analysis must outlive the result. A subject that SubjectRecord refuses is a failure.
TOOL_API Result<MeasuredAnalysis> measure_all(const Analysis& analysis, const Subject& subject,
                                              Shapes shapes = Shapes::wanted, const LandmarkErrors* errors = nullptr);

}  // namespace tool
