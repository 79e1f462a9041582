// Definition files as a program: what their formulas compute, step by step, over numbered landmarks and values. Made
// once by ProgramWriter, run for any number of records by ProgramRun, which touches no text. Constructions and measures
// that formulas have in common are one step.
//
// What depends on the way of an evaluation stays with the text (Item::as_text): items that lead to a circle of
// references or make something that they do not use, and those of files with more references than an evaluation takes.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/definition_file.h"

namespace tool {

using StepId = std::uint32_t;
inline constexpr StepId no_step = ~StepId{0};

// Gives a point or a number. `in` are the steps that it takes, unless something else is said; a step takes earlier
// steps only, but for those that refer to items and norms.
struct Step {
    enum class Kind : unsigned char {
        number,        // `number`; as a point (0, 0)
        landmark,      // of the kind's table: in[0] is its slot
        named,         // any other: in[0] is its place in `names`
        construction,  // `what` is the Construction; all but effective_a
        incisor_lean,  // of effective_a
        effective_a,
        measure,         // `what` is the Measure
        cast_measure,    // in[0] is its place in `tokens`
        operation,       // `what` is the Operation
        first_not_zero,  // of the in[1] steps that `lists` has from in[0] on
        unjudged,        // -1, of a palate that nobody has judged, as 0
        choice,          // in[0] selects one of the in[2] steps that `lists` has from in[1] on; 0 when none
        item,            // the value of item in[0]
        norm,            // the number of norm in[0], 0 when it is none
        deviation        // value, mean, SD
    };
    Kind kind = Kind::number;
    unsigned char what = 0;
    std::array<StepId, 4> in{};
    double number = 0;  // of a construction, too
};

struct Program {
    struct Alternative {
        std::string_view text;
        bool is_text;
    };
    struct NormField {
        std::optional<double> number;
        StepId formula = no_step;  // whose value becomes the norm, in so many decimals
        int decimals = 0;
    };
    struct NormLine {
        bool second_set;
        bool differs;  // from band to band
        bool as_text = false;
        std::vector<NormField> fields;  // one at least; the last serves all bands beyond
        const NormField& field(int band) const;
    };
    // The lines of a norm, male and female; -1: none.
    using Norm = std::array<int, 2>;

    struct Item {
        std::string_view name{};
        bool has_formula = false;
        bool as_text = false;
        StepId value = 0;
        StepId selector = no_step;  // what selects an alternative, in items that have some
        std::vector<Alternative> alternatives{};
        int mean = -1, sd = -1;  // place in `norms`
    };

    // Landmarks that an item or a norm's line may need, as bits: those of the kind's table (of a cast, its points),
    // those in `names`, and the last bit for what no record has. Behind these `words`, the same for what it surely
    // needs.
    const std::uint64_t* needs_of_item(int item) const { return &needs[static_cast<std::size_t>(item) * 2 * words]; }
    const std::uint64_t* needs_of_line(int line) const { return needs_of_item(line + static_cast<int>(items.size())); }

    // Calls visit(step) for what the step takes; of a choice for all that it chooses from, of a norm for nothing.
    template <class Visit>
    void each_input(const Step& step, const Visit& visit) const;

    // The same, and of a norm for the formulas that it has, for any sex and band.
    template <class Visit>
    void each_source(const Step& step, const Visit& visit) const;

    // Place of a norm's line for a sex (1 male, else female), -1 when it has none.
    int line(int norm, int sex) const { return norms[static_cast<std::size_t>(norm)][sex == 1 ? 0 : 1]; }

    int kind = 0;
    std::vector<std::vector<int>> files;  // of each file its items, in its order, as places in `items`
    std::vector<Item> items;
    std::vector<Norm> norms;
    std::vector<NormLine> norm_lines;
    std::vector<Step> steps;  // the first is 0, and (0, 0)
    std::vector<StepId> lists;
    std::vector<std::string> names, tokens;

    std::vector<StepId> order;  // of all steps that values take, but for those that depend on norms
    std::vector<bool> by_norm;  // of each step: it depends on norms, so on sex and band
    std::size_t slots = 0;      // bits of the kind's landmarks
    std::size_t never_met = 0;  // the last bit
    std::size_t words = 0;      // of the bits of an item or line
    std::vector<std::uint64_t> needs;
};

// As norm_of_band picks it.
inline const Program::NormField& Program::NormLine::field(int band) const {
    static constexpr NormField none;
    if (band < 0) return differs ? none : fields.front();
    return fields[std::min(static_cast<std::size_t>(second_set ? band / 100 : band % 100), fields.size() - 1)];
}

template <class Visit>
void Program::each_source(const Step& step, const Visit& visit) const {
    if (step.kind != Step::Kind::norm) return each_input(step, visit);
    for (const int line : norms[step.in[0]])
        if (line >= 0)
            for (const NormField& field : norm_lines[static_cast<std::size_t>(line)].fields)
                if (field.formula != no_step) visit(field.formula);
}

template <class Visit>
void Program::each_input(const Step& step, const Visit& visit) const {
    using StepKind = Step::Kind;
    const auto visit_list = [&](StepId begin, StepId count) {
        for (StepId i = 0; i < count; ++i) visit(lists[begin + i]);
    };
    int fixed = 0;
    switch (step.kind) {
        case StepKind::number:
        case StepKind::landmark:
        case StepKind::named:
        case StepKind::cast_measure:
        case StepKind::norm: break;
        case StepKind::item: return visit(items[step.in[0]].value);
        case StepKind::first_not_zero: return visit_list(step.in[0], step.in[1]);
        case StepKind::choice: visit(step.in[0]); return visit_list(step.in[1], step.in[2]);
        case StepKind::unjudged: fixed = 1; break;
        case StepKind::operation: fixed = 2; break;
        case StepKind::deviation: fixed = 3; break;
        case StepKind::construction:
        case StepKind::incisor_lean:
        case StepKind::effective_a:
        case StepKind::measure: fixed = 4; break;  // those that it does not need are the first step
    }
    for (int i = 0; i < fixed; ++i) visit(step.in[static_cast<std::size_t>(i)]);
}

}  // namespace tool
