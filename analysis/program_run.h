// Runs a program for one record after the other. For one thread; allocates when it is made, and for virtual landmarks.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/landmarks.h"
#include "analysis/program.h"

namespace tool {

class ProgramRun {
 public:
    // `program` must outlive this object.
    explicit ProgramRun(const Program& program);

    // The record that is measured from here on: it and `landmarks`, which are of the program's kind, stay unchanged.
    // False: the program does not serve them, only the text does.
    bool begin(Landmarks& landmarks);
    // Computes all values but those that depend on norms, which is faster than one after the other.
    void run();

    struct Result {
        double value = 0;
        std::optional<double> mean, sd;
        const Program::Alternative* alternative = nullptr;  // the selected one
        bool norm_needs_band = false;                       // as of ItemResult
        bool alternative_is_text() const { return alternative && alternative->is_text; }
        // Only the text tells: something on the way may be undefined (Degeneracy); or the band is not known, and the
        // value or a norm is made from norms.
        bool suspect = false, rests_on_norms = false;
    };
    // As Evaluation gives it for the sex and band. The item must have a formula and not be `as_text`.
    Result item(int place, int sex, int band);

    // Whether the record has all that an item may need, or its norm; whether it lacks what the item needs for sure.
    // When neither is true, only the text tells.
    bool has_all_for(int item) const { return !any(program_.needs_of_item(item), absent_); }
    bool has_all_for_norm(int norm, int sex) const;
    bool lacks_some_for(int item) const { return any(program_.needs_of_item(item) + program_.words, surely_absent_); }

    // What ProgramGradient derives: a step that was computed, the alternative that one took, and the formula of a norm
    // for the sex and band of the last item, no_step when it has none.
    Vec2 computed(StepId id) const { return values_[id]; }
    StepId chosen(const Step& choice) const;
    StepId norm_formula_of(int norm) const;

 private:
    bool known(StepId id) const;
    double value(StepId id);
    void compute(StepId id);
    bool leads_to_suspect(StepId root);
    void spread_suspicion();
    enum class Presence { present, absent, unsure };
    Presence presence(std::size_t bit) const;
    static bool any(const std::uint64_t* needs, const std::vector<std::uint64_t>& absent);
    static std::optional<std::size_t> selected(double selector, std::size_t count);
    const Program::NormLine* norm_line(int norm) const;
    const Program::NormField* norm_field(int norm) const;
    std::optional<double> norm_number(const Program::NormField* field) const;
    std::optional<double> norm(int norm);

    const Program& program_;
    std::vector<Vec2> values_;
    // Of each step when it was computed: good when not before the record, or the sex and band that it depends on.
    std::vector<std::uint64_t> computed_;
    std::uint64_t now_ = 0, record_since_ = 0, norms_since_ = 0;
    bool ran_ = false;
    int sex_ = 0, band_ = 0;
    Landmarks* landmarks_ = nullptr;
    std::vector<std::uint64_t> absent_, surely_absent_;
    std::vector<StepId> wanted_;
    std::vector<StepId> suspects_;   // steps of this record that may be undefined
    bool virtual_suspect_ = false;   // a virtual landmark is
    bool suspicion_spread_ = false;  // of this record
    std::vector<char> leads_to_suspect_;
};

}  // namespace tool
