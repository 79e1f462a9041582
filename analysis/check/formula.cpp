#include "analysis/check/formula.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "analysis/check/formula_arguments.h"
#include "analysis/formula.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

using Values = std::array<double, FormulaTrials::count>;

bool same(double a, double b) {
    if (!std::isfinite(a) || !std::isfinite(b)) return a == b || (std::isnan(a) && std::isnan(b));
    return std::abs(a - b) <= 1e-9 * std::max(std::abs(a), std::abs(b));
}

// Reads a formula as mathematics does. Stops at the first thing that it can't make sense of.
class FormulaReader : FormulaArguments {
 public:
    FormulaReader(std::string_view text, int kind, Findings& findings, LandmarkCheck& landmarks,
                  const FormulaTrials& trials)
        : FormulaArguments(text, kind, findings, landmarks), trials_(trials) {}

    void check() {
        const Term whole = comparison();
        if (!sound_) return;
        if (next() == ')') return fail(here(), "nothing opens this \")\"; remove it");
        if (next() == '[' || next() == '"') operand();  // says what is wrong with it
        if (sound_ && at_ < text_.size()) {
            return fail(here(), quoted(here()) + " is no operator; the operators are * / + - < > = <= >= ==");
        }
        if (!sound_ || has_faults_) return;
        if (steps_ > last_value_made) {
            return findings_.fault(text_, "the formula takes more than " + counted(last_value_made, "step") +
                                              "; split it over several items and refer to them with case(\"name\")");
        }
        if (switches_ > 1 || (switches_ == 1 && (whole.shape != Shape::value || whole.holds_group))) {
            return findings_.fault(text_,
                                   "switch() stands alone in its formula; make it an item of its own and refer to that "
                                   "with case(\"name\")");
        }
        for (int trial = 0; trial < FormulaTrials::count; ++trial)
            if (!same(trials_.evaluated(twin_, trial), whole.values[trial])) return explain_difference();
    }

 private:
    enum class Shape { value, product, sum };
    struct Term {
        Values values{};
        Shape shape = Shape::value;
        bool holds_group = false;
    };

    // --- Mathematics -----------------------------------------------------------------------------------------------

    Term comparison() {
        Term left = sum();
        while (sound_ && (next() == '<' || next() == '>' || next() == '=')) {
            const char operation = text_[at_];
            const bool or_equal = text_.substr(at_ + 1).starts_with('=');
            take(or_equal ? 2 : 1);
            left = combined(left, sum(), Shape::sum, [=](double a, double b) -> double {
                return operation == '<'   ? (or_equal ? a <= b : a < b)
                       : operation == '>' ? (or_equal ? a >= b : a > b)
                                          : a == b;
            });
        }
        return left;
    }

    Term sum() {
        Term left;
        if (next() == '-') {  // the evaluator takes 0 for what is missing in front
            take(1);
            left = combined(left, product(), Shape::sum, [](double a, double b) { return a - b; });
        } else {
            left = product();
        }
        while (sound_ && (next() == '+' || next() == '-')) {
            const bool plus = text_[at_] == '+';
            take(1);
            left = combined(left, product(), Shape::sum, [plus](double a, double b) { return plus ? a + b : a - b; });
        }
        return left;
    }

    Term product() {
        Term left = operand();
        while (sound_ && (next() == '*' || next() == '/')) {
            const bool times = text_[at_] == '*';
            take(1);
            left = combined(left, operand(), Shape::product,
                            [times](double a, double b) { return times ? a * b : a / b; });
        }
        return left;
    }

    template <class Operation>
    Term combined(const Term& a, const Term& b, Shape shape, Operation operation) {
        ++steps_;
        Term result{{}, shape, a.holds_group || b.holds_group};
        for (int trial = 0; trial < FormulaTrials::count; ++trial)
            result.values[trial] = operation(a.values[trial], b.values[trial]);
        return result;
    }

    Term operand() {
        const char first = next();
        if (first == '(') return group();
        if (is_digit(first) || first == '.') return number();
        if (is_letter(first)) return function();
        if (first == '-' || first == '+') {
            const std::string_view sign = here();
            take(1);
            if (next() == '-' || next() == '+') return stop(here(), "two signs behind an operator; remove one");
            remember(signs_, sign);
            Term term = operand();
            for (double& value : term.values) value = first == '-' ? -value : value;
            return term;
        }
        if (first == '[') {
            return stop(here(), "a landmark alone has no value; measure it, as in len([A],[B]) or angle1([A],[B],[C])");
        }
        if (first == '"') return stop(here(), "a name in quotes stands only in case(), sdu(), mean() and sdv()");
        if (at_ == text_.size()) {
            return stop(text_.substr(last_taken_), "a value is missing behind this; it counts as 0");
        }
        return stop(here(), "a value is missing in front of " + quoted(here()) + "; it counts as 0");
    }

    Term number() {
        const std::size_t length = std::min(text_.find_first_not_of("0123456789.", at_), text_.size()) - at_;
        const std::string_view digits = text_.substr(at_, length);
        if (std::ranges::count(digits, '.') > 1 || digits == ".")
            return stop(digits, quoted(digits) + " is no number; write one like 12.5");
        take(length);
        Term term;
        term.values.fill(read_double(digits));
        return term;
    }

    Term group() {
        const std::string_view open = here();
        if (!enter(open)) return {};
        take(1);
        Term inside = comparison();
        if (!close(open)) return {};
        if (inside.holds_group)
            remember(nested_, open);
        else if (inside.shape == Shape::value)
            remember(lone_values_, open);
        else if (inside.shape == Shape::product)
            remember(products_, open);
        return {inside.values, Shape::value, true};
    }

    // --- Functions -------------------------------------------------------------------------------------------------

    Term function() {
        const std::string_view name = word();
        const ValueFunction* function = function_named(value_functions, name);
        const bool is_point = function_named(point_functions, name);
        if (!function && !is_point) return stop(name, no_function(name));
        if (is_point) {
            return stop(name, quoted(name) + " gives a point, not a value; measure it, as in len(" + std::string(name) +
                                  "(...),[A])");
        }
        if (function->takes == Takes::values) return switch_position(name);
        at_ += name.size();
        const std::size_t twin_begin = twin_.size();
        const std::string_view tabs_before = tabs_;
        const std::string_view open = opening(name);
        if (open.empty()) return {};
        std::string twin = std::string(name) + '(';
        bool read = false;
        switch (function->takes) {
            case Takes::points:
                read = points({name, function->points}, open), twin += FormulaTrials::points(calls_, function->points);
                break;
            case Takes::cast_token: read = cast_token(name, twin); break;
            default: read = item(name), twin += FormulaTrials::item(calls_);
        }
        if (!read) return {};
        ++calls_, ++steps_;
        twin += ')';
        twin_.replace(twin_begin, std::string::npos, twin);  // blanks and tabs among the arguments do no harm
        tabs_ = tabs_before;
        Term term;
        for (int trial = 0; trial < FormulaTrials::count; ++trial) term.values[trial] = trials_.evaluated(twin, trial);
        return term;
    }

    Term switch_position(std::string_view name) {
        at_ += name.size();
        twin_ += name;
        if (next() != '(') return stop(name, "a \"(\" is missing behind \"switch\"");
        const std::string_view open = here();
        if (!enter(open)) return {};
        std::vector<Values> arguments;
        do {
            take(1);
            arguments.push_back(comparison().values);
        } while (sound_ && next() == ',');
        if (!close(open)) return {};
        ++steps_;
        Term term;
        for (int trial = 0; trial < FormulaTrials::count; ++trial) {
            const auto chosen = std::ranges::find_if(
                arguments, [trial](const Values& values) { return !(std::abs(values[trial]) < 1); });
            term.values[trial] = static_cast<double>(chosen - arguments.begin());
        }
        ++switches_;
        return term;
    }

    // --- What is found ---------------------------------------------------------------------------------------------

    Term stop(std::string_view place, std::string message) {
        fail(place, std::move(message));
        return {};
    }

    void explain_difference() {
        if (steps_ == 0)
            findings_.fault(text_, "a formula that is only a number gives 0; multiply it by 1");
        else if (!signs_.empty())
            findings_.fault(signs_, "a sign right behind an operator gives 0 there; write (0" + std::string(signs_) +
                                        "...) or turn the operator round");
        else if (!tabs_.empty())
            findings_.fault(tabs_, "a tab beside an operator is no blank, and 0 stands there instead; write a blank");
        else if (!lone_values_.empty())
            findings_.fault(
                lone_values_,
                "brackets round a single value give the value that was made last, not this one; remove them");
        else if (!nested_.empty())
            findings_.fault(
                nested_,
                "a group ends at its first \")\", so groups inside it come out wrong; make the inner one an "
                "item of its own and refer to it with case(\"name\")");
        else if (!products_.empty())
            findings_.fault(products_,
                            "the product in these brackets is made before they are opened, and then they give "
                            "the value that was made last; remove them");
        else
            findings_.fault(text_,
                            "the program does not compute this as mathematics does; split it over several items");
    }

    const FormulaTrials& trials_;

    int calls_ = 0, steps_ = 0, switches_ = 0;
    std::string_view signs_, lone_values_, nested_, products_;  // the first of each that may come out wrong
};

}  // namespace

FormulaCheck::FormulaCheck(int kind, Findings& findings)
    : kind_(kind), findings_(findings), landmarks_(kind, findings) {}

void FormulaCheck::check(std::string_view formula) {
    FormulaReader(formula, kind_, findings_, landmarks_, trials_).check();
}

}  // namespace tool
