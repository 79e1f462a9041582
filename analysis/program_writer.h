// Writes definition files down as a program. It is the arithmetic in which formulas are then read (arithmetic.h): where
// Landmarks would compute, it notes a step, and gives the step's number for the result.
#pragma once

#include <map>
#include <set>
#include <span>
#include <utility>

#include "analysis/evaluation.h"
#include "analysis/formula_names.h"
#include "analysis/program.h"
#include "analysis/program_needs.h"
#include "analysis/virtual_landmarks.h"

namespace tool {

// By default the first step, which is 0 and (0, 0).
struct StepPoint {
    StepId id = 0;
};
struct StepNumber {
    StepId id = 0;
};

class ProgramWriter {
 public:
    explicit ProgramWriter(int kind);

    // The program views into the files' texts. To be called for all files before it is finished.
    void add(const DefinitionFile& file);
    void add_nothing() { program_.files.emplace_back(); }  // keeps a number free
    Program finished();

    // The arithmetic. Landmarks that are not in the kind's table are `user` ones here, whatever they will turn out to
    // be, with their place in the program's names.
    using Point = StepPoint;
    using Number = StepNumber;
    int kind() const { return program_.kind; }
    Landmarks::Found find(std::string_view name);
    Point position(Landmarks::Found found);
    VirtualLandmarks<Point>& virtuals() { return no_virtuals_; }
    std::string_view virtual_construction(int) const { return {}; }
    static bool at_one_place(Point, Point) { return false; }  // ProgramRun finds out
    static bool parallel(const std::array<Point, 4>&) { return false; }
    Point constructed(Construction construction, const std::array<Point, 4>& points, double number);
    Point effective_a(Point n, Point a, const std::array<Point, 2>& incisor, Point u1c);
    Number measured(Measure measure, const std::array<Point, 4>& points);
    Number cast_measure(std::string_view token);
    Number combined(Operation operation, Number left, Number right);
    Number first_not_zero(std::span<const Number> numbers);
    Number number(double number);

 private:
    class NameCollector;
    struct StepLess {
        bool operator()(const Step& a, const Step& b) const;
    };

    StepId step(const Step& step);
    StepId noted_step(const Step& step);
    bool takes_all(StepId result) const;
    StepId list(std::span<const Number> numbers);
    std::size_t name_place(std::string_view name);
    StepNumber formula(std::string_view text, bool& as_text);
    StepNumber reference(const Reference& reference);
    void write_item(int place, const NamedLine& line);
    void write_norm_line(const NamedLine& line);
    int norm_place(std::string_view name, NormPart part);
    int line_place(const std::optional<NamedLine>& line);

    Program program_;
    VirtualLandmarks<Point> no_virtuals_{0};
    std::map<Step, StepId, StepLess> known_steps_;
    std::map<std::string, std::size_t, std::less<>> names_;
    const DefinitionFile* file_ = nullptr;                  // the one that is being added
    std::vector<StepId> noted_;                             // steps of the formula that may turn out to be undefined
    std::map<const char*, int> item_places_, line_places_;  // by the first bytes of the lines
    std::map<Program::Norm, int> norm_places_;
    std::set<std::pair<int, int>> references_;  // of the file: what is asked, and of which item
    std::vector<NamedLine> lines_;              // of the norms, by place
    std::vector<Needer> item_needs_, line_needs_;
};

}  // namespace tool
