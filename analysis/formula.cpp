#include "analysis/formula.h"

#include <algorithm>
#include <span>

#include "analysis/program_writer.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {

namespace {

// The last one, "switch", has its turn behind the arithmetic.
constexpr std::span keywords(value_functions, std::size(value_functions) - 1);
constexpr std::string_view switch_keyword = std::end(value_functions)[-1].name;
constexpr std::size_t token_length = 3;
constexpr std::size_t longest_name = 99;
// Groups that open right behind an operator inside each other; deeper ones count as 0.
constexpr int deepest_group = 400;

// The passes of the arithmetic, and the one in which an operator has its turn; 0 for any other character.
enum : unsigned { products = 1, sums = 2, comparisons = 4 };
unsigned pass_of(char c) {
    switch (c) {
        case '*':
        case '/': return products;
        case '+':
        case '-': return sums;
        case '<':
        case '>':
        case '=': return comparisons;
        default: return 0;
    }
}

bool is_number_char(char c) {
    return is_digit(c) || c == '.';
}

Operation operation_of(char c, bool or_equal) {
    switch (c) {
        case '*': return Operation::times;
        case '/': return Operation::over;
        case '+': return Operation::plus;
        case '-': return Operation::minus;
        case '<': return or_equal ? Operation::at_most : Operation::less;
        case '>': return or_equal ? Operation::at_least : Operation::more;
        default: return Operation::equal;
    }
}

// Whether the characters of a text, told one after another, stand inside double quotes or square brackets.
class NameSpan {
 public:
    bool holds(char c) {
        if (c == '"' && !bracketed_) quoted_ = !quoted_;
        if (c == '[' && !quoted_) bracketed_ = true;
        if (c == ']') bracketed_ = false;
        return quoted_ || bracketed_;
    }

 private:
    bool quoted_ = false, bracketed_ = false;
};

// Position of the "(" that matches the ")" at `close`, or npos.
std::size_t matching_open(std::string_view text, std::size_t begin, std::size_t close) {
    int depth = 0;
    for (std::size_t at = close + 1; at-- > begin;) {
        if (text[at] == ')') ++depth;
        if (text[at] == '(' && --depth == 0) return at;
    }
    return std::string_view::npos;
}

int token_number(std::string_view digits) {
    int number = 0;
    for (const char c : digits.substr(0, 2)) {
        if (!is_digit(c)) break;
        number = number * 10 + (c - '0');
    }
    return number;
}

}  // namespace

std::optional<QuotedName> quoted_name(std::string_view text) {
    const std::size_t open = text.find('"');
    if (open == std::string_view::npos) return std::nullopt;
    const std::size_t close = text.find('"', open + 1);
    if (close == std::string_view::npos) return std::nullopt;
    const std::size_t bracket = text.find(')', close);
    return QuotedName{text.substr(open + 1, std::min(close - open - 1, longest_name)),
                      bracket == std::string_view::npos ? text.size() : bracket + 1};
}

template <class Arithmetic>
Formula<Arithmetic>::Formula(std::string_view text, bool top_level, ValueList<Number> values,
                             PointReader<Arithmetic>& points, Resolve resolve)
    : text_(text.substr(0, text.find(';'))),
      values_(values),
      points_(points),
      resolve_(std::move(resolve)),
      size_(text_.size()) {
    if (!top_level && text_.starts_with('(')) {
        text_[0] = ' ';
        const std::size_t close = text_.find(')');
        if (close != std::string::npos) text_[close] = ' ', end_ = size_ - close - 1;
    }
    unread_ = end_;
    hits_ = keywords_in(0, position(end_));
}

// Where the keywords stand, in the order in which they are replaced. What a step blanks or writes never makes a new
// keyword; those that it blanks are found out when their turn comes.
template <class Arithmetic>
auto Formula<Arithmetic>::keywords_in(std::size_t begin, std::size_t end) const -> std::vector<Hit> {
    std::vector<Hit> hits;
    NameSpan name;
    const std::string_view text = std::string_view(text_).substr(0, end);
    for (std::size_t at = begin; at < end; at += char_length(text.substr(at))) {
        const char c = text[at];
        if (name.holds(c) || c < 'M' || c > 's') continue;
        for (std::size_t k = 0; k < std::size(keywords); ++k)
            if (c == keywords[k].name[0] && text.substr(at).starts_with(keywords[k].name)) hits.push_back({k, at});
    }
    std::ranges::stable_sort(hits, {}, &Hit::keyword);
    return hits;
}

template <class Arithmetic>
std::optional<Reference> Formula<Arithmetic>::advance() {
    if (finished_) return std::nullopt;
    for (; next_hit_ < hits_.size(); ++next_hit_)
        if (const auto reference = replace(hits_[next_hit_])) return reference;
    combine_passes(0, end_, 0);
    evaluate_switch(0, end_);
    finished_ = true;
    return std::nullopt;
}

template <class Arithmetic>
void Formula<Arithmetic>::supply(Number value) {
    replace_hit(hits_[next_hit_++], value, pending_end_);
}

// Replaces a function, or gives the reference whose value belongs there.
template <class Arithmetic>
std::optional<Reference> Formula<Arithmetic>::replace(const Hit& hit) {
    const ValueFunction& keyword = keywords[hit.keyword];
    const std::string_view rest = std::string_view(text_).substr(hit.at);
    if (values_.full() || !rest.starts_with(keyword.name)) return std::nullopt;
    const std::string_view behind = rest.substr(keyword.name.size());
    const std::size_t behind_at = hit.at + keyword.name.size();
    if (!keyword.ask) {
        const Measured<Number> result = read_measure(keyword.measure, behind, points_);
        replace_hit(hit, result.value, behind_at + result.end);
    } else if (const auto name = quoted_name(behind)) {
        pending_end_ = behind_at + name->end;
        return Reference{*keyword.ask, name->name};
    } else {
        replace_hit(hit, Number(), behind_at);
    }
    return std::nullopt;
}

template <class Arithmetic>
void Formula<Arithmetic>::replace_hit(const Hit& hit, Number value, std::size_t arguments_end) {
    if (values_.full()) return;  // filled by the values of a group or item in between
    values_.append(value);
    read_to(arguments_end);
    std::fill(text_.begin() + hit.at, text_.begin() + arguments_end, ' ');
    write_token(hit.at, arguments_end);
}

// Writes the token of the last value over the blanks at `begin`, making room when there are too few. Returns the
// position behind it.
template <class Arithmetic>
std::size_t Formula<Arithmetic>::write_token(std::size_t begin, std::size_t end) {
    std::size_t room = 0;
    while (room < token_length && begin + room < end && text_[begin + room] == ' ') ++room;
    const int number = values_.count();
    const char token[] = {'d', static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
    text_.replace(begin, room, token, token_length);
    return begin + token_length;
}

template <class Arithmetic>
void Formula<Arithmetic>::combine_passes(std::size_t begin, FromEnd end, int depth) {
    // Steps remove operators and never add one, so one look tells which of the passes have anything to do.
    unsigned present = 0;
    for (std::size_t at = begin; at < position(end); ++at) present |= pass_of(text_[at]);
    for (const unsigned pass : {products, sums, comparisons})
        if (present & pass) combine_all(begin, end, pass, depth);
}

template <class Arithmetic>
void Formula<Arithmetic>::combine_all(std::size_t begin, FromEnd end, unsigned pass, int depth) {
    for (std::size_t at = begin; at < position(end) && !values_.full();) {
        const char operation = text_[at];
        if (pass_of(operation) != pass) {
            ++at;
            continue;
        }
        std::size_t operation_end = at + 1;
        const bool or_equal = pass == comparisons && operation_end < position(end) && text_[operation_end] == '=';
        if (or_equal) ++operation_end;
        const FromEnd right_begin = text_.size() - operation_end;
        const Operand left = left_operand(begin, at, depth);
        const Operand right = right_operand(position(right_begin), end, depth);
        if (values_.full()) return;
        values_.append(points_.arithmetic().combined(operation_of(operation, or_equal), left.value, right.value));
        for (std::size_t i = left.edge; i < right.edge; ++i)
            if (text_[i] != ',') text_[i] = ' ';
        at = write_token(left.edge, std::min(right.edge, position(end)));
    }
}

template <class Arithmetic>
auto Formula<Arithmetic>::left_operand(std::size_t begin, std::size_t at, int depth) -> Operand {
    std::string digits;
    std::size_t edge = at;
    for (; edge > begin && (text_[edge - 1] == ' ' || is_number_char(text_[edge - 1])); --edge)
        if (text_[edge - 1] != ' ') digits += text_[edge - 1];
    std::ranges::reverse(digits);
    if (edge > begin && text_[edge - 1] == 'd') return {values_.at(token_number(digits)), edge - 1};
    if (edge > begin && text_[edge - 1] == ')') {
        const std::size_t open = matching_open(text_, begin, edge - 1);
        if (open == std::string::npos) return {Number(), edge};
        std::size_t end = 0;
        return {group(open, depth, &end), open};  // ends there at the latest, since its brackets match
    }
    return {points_.arithmetic().number(read_double(digits)), edge};
}

template <class Arithmetic>
auto Formula<Arithmetic>::right_operand(std::size_t at, FromEnd end, int depth) -> Operand {
    std::string digits;
    std::size_t edge = at;
    for (; edge < position(end) && (text_[edge] == ' ' || is_number_char(text_[edge])); ++edge)
        if (text_[edge] != ' ') digits += text_[edge];
    if (!digits.empty() || edge >= position(end)) return {points_.arithmetic().number(read_double(digits)), edge};
    if (text_[edge] == 'd') {
        std::size_t digits_end = edge + 1;
        while (digits_end < position(end) && digits_end < edge + token_length && is_digit(text_[digits_end]))
            ++digits_end;
        return {values_.at(token_number(std::string_view(text_).substr(edge + 1, digits_end - edge - 1))), digits_end};
    }
    if (text_[edge] == '(') {
        std::size_t group_end = 0;
        const Number value = group(edge, depth, &group_end);
        return {value, group_end};
    }
    return {Number(), at};
}

// Evaluates the group that opens at `open`, up to its first ")", and blanks it.
template <class Arithmetic>
auto Formula<Arithmetic>::group(std::size_t open, int depth, std::size_t* end) -> Number {
    const std::size_t close = std::min(text_.find(')', open), text_.size());
    text_[open] = ' ';
    const bool closed = close < text_.size();
    if (closed) text_[close] = ' ';
    // Groups inside that run beyond this end leave nothing but blanks there. So it does no harm that the end moves
    // with the tokens that they write.
    const FromEnd from_end = text_.size() - close;
    if (depth < deepest_group) {
        if (from_end < end_) replace_all(open, close);
        combine_passes(open, from_end, depth + 1);
        evaluate_switch(open, from_end);
    }
    std::fill(text_.begin() + open, text_.begin() + position(from_end), ' ');
    *end = position(from_end) + (closed ? 1 : 0);
    read_to(*end);
    return values_.last();
}

// Replaces the functions of a group that runs beyond the end of the formula's own text.
template <class Arithmetic>
void Formula<Arithmetic>::replace_all(std::size_t begin, std::size_t end) {
    for (const Hit& hit : keywords_in(begin, end))
        if (const auto reference = replace(hit)) replace_hit(hit, resolve_(*reference), pending_end_);
}

template <class Arithmetic>
void Formula<Arithmetic>::evaluate_switch(std::size_t begin, FromEnd end) {
    constexpr std::string_view keyword = switch_keyword;
    if (values_.full() || text_.find(keyword, begin) == std::string::npos) return;
    std::size_t at = begin;
    NameSpan name;
    for (; at < position(end); at += char_length(std::string_view(text_).substr(at)))
        if (!name.holds(text_[at]) && std::string_view(text_).substr(at).starts_with(keyword)) break;
    if (at + keyword.size() > position(end)) return;
    const std::size_t open = text_.find('(', at + keyword.size());
    if (open >= position(end)) return;
    const std::size_t close = std::min(text_.find(')', open), position(end));
    std::vector<Number> arguments;
    for (std::size_t argument = open + 1; argument <= close;) {
        const std::size_t argument_end = std::min(text_.find(',', argument), close);
        std::string_view text = std::string_view(text_).substr(argument, argument_end - argument);
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        arguments.push_back(text.starts_with('d') ? values_.at(read_int(text.substr(1, 2)))
                                                  : points_.arithmetic().number(read_int(text)));
        argument = argument_end + 1;
    }
    values_.append(points_.arithmetic().first_not_zero(arguments));
    std::fill(text_.begin() + at, text_.begin() + position(end), ' ');
    write_token(at, at + keyword.size());
}

template class Formula<Landmarks>;
template class Formula<ProgramWriter>;

}  // namespace tool
