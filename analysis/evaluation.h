// Items and norms of one definition file evaluated for one subject.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "analysis/definition_file.h"
#include "analysis/formula.h"
#include "analysis/landmarks.h"
#include "analysis/point_expression.h"

namespace tool {

// What an item gives in place of its value when it has no numeric mean.
inline constexpr double no_norm = 999999999.0;

// (value - mean) / sd; 0 when sd is exactly 0.
double deviation(double value, double mean, double sd);

// An item's norm as its text and, when that text is a number, as one.
struct Norm {
    std::string text;
    std::optional<double> value;
};

Norm norm_of_text(std::string_view text);
// The text that a norm formula's value becomes.
std::string norm_formula_text(double value, int decimals);
// The number that this text is read as, if it is one.
std::optional<double> norm_formula_number(double value, int decimals);
// A norm formula, without the separator and the digit at its end that tells its decimals; nothing when there is none.
struct NormFormula {
    std::string_view text;
    int decimals;
};
std::optional<NormFormula> norm_formula(std::string_view norm_text);

// Whether -1 is what the expression gives for a palate that nobody has judged yet, so that it counts as 0.
bool judges_palate(std::string_view expression);

struct ItemResult {
    double value = 0;
    Norm mean, sd;                           // as far as they were asked for
    std::string_view alternative{};          // the selected one, into the file's text
    bool is_text = false;                    // the alternative is a text, and the value 0
    bool needs_band = false;                 // made from norms that differ from band to band, without knowing the band
    bool norm_needs_band = false;            // the same for the norms, which are then left out
    std::optional<Degeneracy> degeneracy{};  // of what the value was made from
    double asked(Ask ask) const;
};

// At most so many items are evaluated in a call.
inline constexpr int most_evaluations = 10000;

// Items that refer to items are worked off on a stack of the heap, so their number is bounded by the limit below and
// not by the thread's stack.
//
// 1. An item's value, or a norm, met again while it is being evaluated is 0.
// 2. What an item or norm gave is remembered, unless something was met again on the way: what the members of a circle
//    give depends on where the walk began.
// 3. After 10,000 evaluations every further item is 0. That holds for each call alone: what was remembered when the
//    limit is reached is forgotten, and the call made again.
class Evaluation {
 public:
    // The file of the items that formulas refer to, asked for at the first reference; null: none.
    using FileSource = std::function<const DefinitionFile*()>;

    // `band` as in norm_of_band.
    Evaluation(FileSource file, Landmarks& landmarks, int sex, int band);

    // Nothing when there is no such item or it has no formula.
    std::optional<ItemResult> item(std::string_view name, Ask ask);
    Norm norm(std::string_view name, NormPart part);
    // Evaluates a text that belongs to no item; returns the bytes of it that were read.
    std::size_t formula(std::string_view text, bool top_level, ValueList<double> values);

    PointReader<Landmarks>& points() { return points_; }

 private:
    enum class Stage { expression, alternative, mean, sd, done };
    // An item, or a norm that was asked for alone, on its way. Without a formula it is done.
    struct Frame {
        Frame() {}  // leaves the values as they are: only the first `count` are ever read

        Stage stage = Stage::done;
        Ask ask = Ask::value;
        std::string_view expression;  // the item's, without the type suffix
        ItemResult result;
        DefinitionFile::Lines lines;
        const char* norm_line = nullptr;  // tells the norm apart whose formula is being evaluated
        int norm_decimals = 0;
        bool in_circle = false;           // on the way something was met again
        std::optional<Degeneracy> outer;  // met before, further out
        bool outer_band_missed = false;   // likewise
        int count = 0;
        double values[value_list_capacity];
        std::optional<Formula<Landmarks>> formula;
    };

    // The item's number when it is known at once: 0 for one that is missing or met again, and, unless the whole result
    // is wanted, what it gave before. Else a frame was begun.
    std::optional<double> begin_item(std::string_view name, Ask ask, bool remembered = true);
    void begin_formula(Frame& frame, Stage stage, std::string_view text);
    void begin_norm(Frame& frame, NormPart part);
    void formula_done(Frame& frame);
    void expression_done(Frame& frame, double value);
    void item_done(Frame& frame, double value);
    void norm_done(Frame& frame, Norm norm);
    bool met_again(const char* line);
    void finish_frame(const Formula<Landmarks>* root);
    const DefinitionFile* file();
    void run(Formula<Landmarks>* root);

    FileSource source_;
    std::optional<const DefinitionFile*> file_;
    PointReader<Landmarks> points_;
    int sex_, band_;
    int evaluations_ = 0;
    bool at_limit_ = false;     // an item counted as 0 for the limit's sake
    bool band_missed_ = false;  // by what the innermost frame is making
    std::deque<Frame> frames_;
    std::unordered_set<const char*> being_evaluated_;  // lines of items and norms
    struct Known {
        double value;
        std::optional<Degeneracy> degeneracy;
        bool needs_band;
    };
    std::map<std::pair<const char*, Ask>, Known> known_;
    ItemResult finished_;
    double asked_ = 0;  // of it
};

}  // namespace tool
