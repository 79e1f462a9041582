#include "analysis/check/formula.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <type_traits>

#include "analysis/cast_measures.h"
#include "analysis/formula.h"
#include "analysis/functions.h"
#include "analysis/landmark_names.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

using Values = std::array<double, FormulaTrials::count>;

constexpr int deepest = 60;  // groups and constructions inside each other

template <class Functions>
auto function_named(const Functions& functions, std::string_view name) {
    const auto* const found = std::ranges::find(functions, name, &std::remove_cvref_t<decltype(*functions)>::name);
    return found == std::end(functions) ? nullptr : found;
}

std::vector<std::string_view> names_of(const auto& functions) {
    std::vector<std::string_view> names;
    for (const auto& function : functions) names.push_back(function.name);
    return names;
}

// "a, b and c"
std::string enumerated(const std::vector<std::string_view>& names) {
    std::string text(names.front());
    for (std::size_t i = 1; i < names.size(); ++i) text.append(i + 1 < names.size() ? ", " : " and ").append(names[i]);
    return text;
}

std::string no_function(std::string_view name) {
    std::vector<std::string_view> names = names_of(value_functions);
    const std::vector<std::string_view> points = names_of(point_functions);
    const std::string known = "; values come from " + enumerated(names) + ", points from " + enumerated(points);
    names.insert(names.end(), points.begin(), points.end());
    const std::string meant = suggestion(meant_name(name, names));
    return "there is no function " + quoted(name) + (meant.empty() ? known : meant);
}

bool is_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool same(double a, double b) {
    if (!std::isfinite(a) || !std::isfinite(b)) return a == b || (std::isnan(a) && std::isnan(b));
    return std::abs(a - b) <= 1e-9 * std::max(std::abs(a), std::abs(b));
}

// Reads a formula as mathematics does. Stops at the first thing that it can't make sense of.
class FormulaReader {
 public:
    FormulaReader(std::string_view text, int kind, Findings& findings, LandmarkCheck& landmarks,
                  const FormulaTrials& trials)
        : text_(text), kind_(kind), findings_(findings), landmarks_(landmarks), trials_(trials) {}

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

    // The points of a function up to its ")".
    struct PointsWanted {
        std::string_view of;
        int points;
        bool number = false;  // behind them
    };
    bool points(const PointsWanted& function, std::string_view open) {
        if (!enter(open)) return false;
        const std::string_view name = function.of;
        int count = 0;
        bool number = false, comma = false;
        for (; sound_ && next() != ')' && at_ < text_.size(); comma |= text_[at_ - 1] == ',') {
            const char c = text_[at_];
            if (c == ',') {
                ++at_;
            } else if (c == '[') {
                const auto landmark = bracketed();
                if (landmark) landmarks_.check(*landmark);
                ++count;
                comma = false;
            } else if (is_letter(c)) {
                count += construction();
                comma = false;
            } else if (function.number && comma && count >= function.points && !number) {
                std::size_t used = 0;
                read_double(text_.substr(at_), &used);
                if (used == 0) fail(here(), quoted(here()) + " is no number; write one like 12.5");
                at_ += used;
                number = true;
            } else {
                fail(here(), quoted(here()) + " is no point; write a landmark in brackets");
            }
        }
        if (!sound_ || !close_here(open)) return false;
        --depth_;
        const std::string needs = quoted(name) + " takes " + counted(function.points, "point");
        if (count != function.points)
            slip(name, needs + " and has " + print_int(count) +
                           (count < function.points ? "; it gives 0" : "; the last ones are not read"));
        else if (function.number && !number)
            slip(name, needs + " and a number behind them; the number is missing");
        if (name == "EffectiveA" && kind_ >= 0 && !is_lateral(kind_))
            slip(name, "\"EffectiveA\" is found on lateral films only; it gives (0, 0) here");
        return true;
    }

    // A construction among points; 1 when it is one.
    int construction() {
        const std::string_view name = word();
        const PointFunction* function = function_named(point_functions, name);
        if (!function) {
            fail(name, function_named(value_functions, name)
                           ? quoted(name) + " gives a value, and a point belongs here; write a landmark in brackets"
                           : no_function(name));
            return 0;
        }
        at_ += name.size();
        if (!text_.substr(at_).starts_with('(')) {
            fail(name, "a \"(\" is missing right behind " + quoted(name));
            return 0;
        }
        const std::string_view open = here();
        ++at_;
        points({name, function->points, function->number}, open);
        return 1;
    }

    bool cast_token(std::string_view name, std::string& twin) {
        const std::size_t begin = at_;
        if (text_.substr(at_, 1) != "[" || !bracketed()) {
            fail(name, "\"Model\" takes one measure of a cast, without blanks round it, as in Model([UCAW])");
            return false;
        }
        const std::string_view token = text_.substr(begin, at_ - begin);
        if (!text_.substr(at_).starts_with(')')) {
            fail(name, "\"Model\" takes one measure of a cast and nothing else, as in Model([UCAW])");
            return false;
        }
        ++at_;
        if (!is_cast_token(token))
            slip(token, quoted(token) + " is no measure of a cast; it gives 0");
        else if (kind_ >= 0 && kind_ != 2)
            slip(name, "\"Model\" measures casts; it gives 0 here");
        twin += token;
        return true;
    }

    // The quoted name of an item; whether there is such an item is for others to say.
    bool item(std::string_view name) {
        if (next() != '"') {
            fail(name, quoted(name) + " takes the name of an item in double quotes, as in " + std::string(name) +
                           "(\"name\")");
            return false;
        }
        const std::string_view open = here();
        const std::size_t end = text_.find('"', at_ + 1);
        if (end == std::string_view::npos) {
            fail(open, "this quote is never closed; write another \" behind the name");
            return false;
        }
        at_ = end + 1;
        if (next() != ')') {
            fail(name, quoted(name) + " takes one name and nothing else; write \")\" behind it");
            return false;
        }
        ++at_;
        return true;
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

    // --- The text --------------------------------------------------------------------------------------------------

    char next() {
        const std::size_t begin = at_;
        for (; at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t'); ++at_)
            if (text_[at_] == '\t') remember(tabs_, here());
        twin_ += text_.substr(begin, at_ - begin);
        return at_ < text_.size() ? text_[at_] : '\0';
    }
    std::string_view here() const { return text_.substr(at_, char_length(text_.substr(at_))); }
    void take(std::size_t count) {
        twin_ += text_.substr(at_, count);
        last_taken_ = at_;
        at_ += count;
    }
    std::string_view word() const {
        std::size_t end = at_;
        while (end < text_.size() && (is_letter(text_[end]) || is_digit(text_[end]))) ++end;
        return text_.substr(at_, end - at_);
    }
    std::string_view opening(std::string_view name) {
        if (next() != '(') {
            fail(name, "a \"(\" is missing behind " + quoted(name));
            return {};
        }
        return text_.substr(at_++, 1);
    }
    // The name in the brackets that open here.
    std::optional<std::string_view> bracketed() {
        const std::string_view open = here();
        const std::size_t length = find_char(text_.substr(at_ + 1), ']');
        const std::string_view name = text_.substr(at_ + 1, length);
        if (length == std::string_view::npos || find_char(name, '[') != std::string_view::npos) {
            fail(open, "this \"[\" is never closed; write \"]\" behind the name");
            return std::nullopt;
        }
        at_ += length + 2;
        return name;
    }
    bool enter(std::string_view place) {
        if (++depth_ <= deepest) return true;
        fail(place, "too many brackets inside each other; split the formula over several items");
        return false;
    }
    bool close_here(std::string_view open) {
        if (next() == ')') {
            ++at_;
            return true;
        }
        fail(open, "this \"(\" is never closed; write \")\" where its part ends");
        return false;
    }
    bool close(std::string_view open) {
        if (!sound_) return false;
        if (next() != ')' && at_ < text_.size()) {
            fail(here(), quoted(here()) + " does not belong here; an operator or \")\" is missing");
            return false;
        }
        if (!close_here(open)) return false;
        twin_ += ')';
        --depth_;
        return true;
    }

    // --- What is found ---------------------------------------------------------------------------------------------

    void fail(std::string_view place, std::string message) {
        if (sound_) findings_.fault(place, std::move(message));
        sound_ = false;
    }
    Term stop(std::string_view place, std::string message) {
        fail(place, std::move(message));
        return {};
    }
    // A fault behind which reading goes on.
    void slip(std::string_view place, std::string message) {
        findings_.fault(place, std::move(message));
        has_faults_ = true;
    }
    static void remember(std::string_view& first, std::string_view place) {
        if (first.empty()) first = place;
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

    std::string_view text_;
    int kind_;
    Findings& findings_;
    LandmarkCheck& landmarks_;
    const FormulaTrials& trials_;

    std::size_t at_ = 0, last_taken_ = 0;
    std::string twin_;  // the formula over made-up landmarks and items
    int calls_ = 0, steps_ = 0, switches_ = 0, depth_ = 0;
    bool sound_ = true, has_faults_ = false;
    std::string_view signs_, tabs_, lone_values_, nested_, products_;  // the first of each that may come out wrong
};

}  // namespace

FormulaCheck::FormulaCheck(int kind, Findings& findings)
    : kind_(kind), findings_(findings), landmarks_(kind, findings) {}

void FormulaCheck::check(std::string_view formula) {
    FormulaReader(formula, kind_, findings_, landmarks_, trials_).check();
}

}  // namespace tool
