// Addition of this project: how surely landmarks are found, from "LandmarkError.txt" of an analysis folder
// (docs/errors.md). Texts are UTF-8.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "AnalysisSheet.h"
#include "framework/export.h"

namespace tool {

// The standard error of a landmark that is placed once. On lateral films along and across Frankfort, on frontal ones
// across and up the film.
struct LandmarkError {
    std::string name;
    bool frontal = false;
    double along_mm = 0, across_mm = 0;
    int readings = 0;         // that the figure was reckoned from; 0: not told
    std::string source = {};  // who read what; "" when not told
    bool assumed = false;     // nobody measured it
};

// What the errors' axes were taken from: where Porion or Orbitale is missing, S-N turned by 7 degrees.
enum class ErrorAxes { frankfort, sella_nasion, film };

// Never changes, and may be shared by threads; copies share what was read.
class TOOL_API LandmarkErrors {
 public:
    LandmarkErrors();  // of no landmark
    explicit LandmarkErrors(std::span<const LandmarkError> errors);
    // From bytes in code page 932. Lines that can't be read are passed over (DefinitionCheck names them).
    static LandmarkErrors from_text(std::string_view text);

    std::span<const LandmarkError> all() const;
    // For a landmark without a line that of "*", an assumed one; null without either.
    const LandmarkError* find(std::string_view name, bool frontal) const;
    // Those that are not assumed.
    LandmarkErrors measured() const;
    // As a file: code page 932, line ends CR LF. `heading` becomes its first lines, comments. Nothing when a text has
    // no place in the code page.
    std::optional<std::string> to_text(std::string_view heading) const;

 private:
    std::shared_ptr<const std::vector<LandmarkError>> errors_;
};

}  // namespace tool

// What the error of a value, or the lack of one, rests on.
enum class ErrorState {
    known,
    no_figure,   // for a landmark that it rests on
    at_border,   // within the errors of the landmarks the formula goes another way, so that the value jumps
    not_derived  // cast measures, virtual landmarks, and formulas that lead in a circle or make what they do not use
};

// The standard error of an item's value from those of its landmarks, which are taken as independent: linear
// propagation (Taylor, An Introduction to Error Analysis, 2nd ed. 1997, ch. 3).
struct SheetError {
    ErrorState state = ErrorState::not_derived;
    double value = 0;      // in the value's unit
    double deviation = 0;  // of the deviation from the mean, in SD; 0 without one
    CString mostly;        // the landmark that contributes most
    double share = 0;      // of the variance that it makes up, 0 to 1
    CStringArray without;  // landmarks that have no figure
    CStringArray assumed;  // of a known error: landmarks whose figure is assumed, and adds to it
};
