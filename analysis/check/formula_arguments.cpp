#include "analysis/check/formula_arguments.h"

#include "analysis/cast_measures.h"
#include "analysis/functions.h"
#include "analysis/landmark_names.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

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

}  // namespace

std::string no_function(std::string_view name) {
    std::vector<std::string_view> names = names_of(value_functions);
    const std::vector<std::string_view> points = names_of(point_functions);
    const std::string known = "; values come from " + enumerated(names) + ", points from " + enumerated(points);
    names.insert(names.end(), points.begin(), points.end());
    const std::string meant = suggestion(meant_name(name, names));
    return "there is no function " + quoted(name) + (meant.empty() ? known : meant);
}

bool FormulaArguments::points(const PointsWanted& function, std::string_view open) {
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
int FormulaArguments::construction() {
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

bool FormulaArguments::cast_token(std::string_view name, std::string& twin) {
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

bool FormulaArguments::item(std::string_view name) {
    if (next() != '"') {
        fail(name,
             quoted(name) + " takes the name of an item in double quotes, as in " + std::string(name) + "(\"name\")");
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

}  // namespace tool
