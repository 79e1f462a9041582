// The formula evaluator. A formula is evaluated by rewriting its text: each step takes what it measures or combines
// out of the text, appends the result to a list of values and leaves a token, "d01" to "d99", in its place.
//
// 1. Functions are replaced first, one keyword after another (Model, lenR, lenD, len, angle1, angle3, angle2, angle4,
//    case, sdu, mean, sdv), each from left to right. Keywords inside double quotes or square brackets,
//    "switch" included, are names.
// 2. Then come "*" and "/", then "+" and "-", then "<" ">" "=" "<=" ">=" "==" (1 or 0), each left to right.
// 3. An operand is a number, a token or a group; a missing one is 0.
// 4. Then "switch(a,b,...)" gives the position, from 0, of its first argument that is not zero.
// 5. The result is the last value made; without any it is 0.
//
// Kept: a formula that is only a number makes no value, so it is 0; a group that holds only a value gives the last
// value made. So (2*3)-(4*5) is 0. A group's text ends at its first ")", and both brackets become blanks; a "(" that is
// left in it is then met as an operand and runs to the next ")", beyond the end of the group that it stands in. So
// 1/(1+(2+3)+4) is 1/(1+((2+3)+4)) and 2*((1+2)+3) is 2*(1+2)+3. Formulas in use were written with these rules.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/functions.h"
#include "analysis/measures.h"
#include "analysis/point_expression.h"

namespace tool {

inline constexpr int value_list_capacity = 100, last_value_made = 99;

// The caller's array of 100 values and the count of those in use.
template <class Number>
class ValueList {
 public:
    ValueList(Number* values, int* count) : values_(values), count_(count) {
        *count_ = std::clamp(*count_, 0, value_list_capacity);
    }

    bool full() const { return *count_ >= last_value_made; }
    void append(Number value) { values_[(*count_)++] = value; }
    int count() const { return *count_; }
    Number last() const { return *count_ > 0 ? values_[*count_ - 1] : Number(); }
    // From 1; below reads the first, beyond the count 0.
    Number at(int position) const {
        position = std::max(position, 1);
        return position <= *count_ ? values_[position - 1] : Number();
    }

 private:
    Number* values_;
    int* count_;
};

struct Reference {
    Ask ask;
    std::string_view name;  // into the formula's text; good until supply()
};

struct QuotedName {
    std::string_view name;  // at most 99 bytes
    std::size_t end;        // behind the next ")" after the closing quote; the text's end without one
};

// The first text in double quotes; nothing without two of them.
std::optional<QuotedName> quoted_name(std::string_view text);

// One formula on its way, in an arithmetic (arithmetic.h). It stops at each reference to another item until that item's
// value is supplied, so that items that refer to items take no stack.
template <class Arithmetic>
class Formula {
 public:
    using Number = typename Arithmetic::Number;
    // The value of a reference that the formula can't stop for.
    using Resolve = std::function<Number(const Reference&)>;

    // Top level reads to the first ";" or the end; a group, which begins with "(", to its first ")". Arguments and
    // groups that begin in it may end behind that; `resolve` gives the references in such groups their values.
    Formula(std::string_view text, bool top_level, ValueList<Number> values, PointReader<Arithmetic>& points,
            Resolve resolve = {});

    // Works on up to the next reference; nothing when the formula is done.
    std::optional<Reference> advance();
    void supply(Number value);  // the value of the reference that advance() gave

    Number result() const { return values_.last(); }
    std::size_t extent() const { return size_ - unread_; }  // bytes of the caller's text that were read

 private:
    // Positions count from the end of the text: what stands behind a place does not move when a token needs room.
    using FromEnd = std::size_t;
    struct Operand {
        Number value;
        std::size_t edge;  // where it begins (left) or ends (right)
    };
    struct Hit {
        std::size_t keyword;
        std::size_t at;
    };
    std::vector<Hit> keywords_in(std::size_t begin, std::size_t end) const;
    std::optional<Reference> replace(const Hit& hit);
    void replace_all(std::size_t begin, std::size_t end);
    void replace_hit(const Hit& hit, Number value, std::size_t arguments_end);
    void combine_passes(std::size_t begin, FromEnd end, int depth);
    void combine_all(std::size_t begin, FromEnd end, unsigned pass, int depth);
    Operand left_operand(std::size_t begin, std::size_t at, int depth);
    Operand right_operand(std::size_t at, FromEnd end, int depth);
    Number group(std::size_t open, int depth, std::size_t* end);
    std::size_t write_token(std::size_t begin, std::size_t end);
    void evaluate_switch(std::size_t begin, FromEnd end);
    std::size_t position(FromEnd end) const { return text_.size() - end; }
    void read_to(std::size_t end) { unread_ = std::min(unread_, text_.size() - end); }

    std::string text_;
    ValueList<Number> values_;
    PointReader<Arithmetic>& points_;
    Resolve resolve_;
    std::size_t size_;
    FromEnd end_ = 0;     // of the formula's own text
    FromEnd unread_ = 0;  // what no argument and no group reached
    std::vector<Hit> hits_;
    std::size_t next_hit_ = 0;
    std::size_t pending_end_ = 0;
    bool finished_ = false;
};

}  // namespace tool
