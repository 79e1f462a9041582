#include "analysis/item_text.h"

#include <algorithm>
#include <string>

#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::size_t max_type_digits = 4;
constexpr std::size_t max_field = 100;

ItemType type_of_number(int n) {
    const bool marked = n >= 10;
    if (marked) n -= 10;
    return {n % 3, (marked ? 2 : 0) + (n < 3 ? 1 : 0)};
}

}  // namespace

TypedExpression split_type(std::string_view expression) {
    const auto end = std::ranges::find_if(expression, [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
    expression = expression.substr(0, static_cast<std::size_t>(end - expression.begin()));
    const std::size_t first = expression.find(':');
    if (first == std::string_view::npos) return {expression, type_of_number(0)};
    std::string digits;
    for (const char c : expression.substr(first))
        if (c != ':' && digits.size() < max_type_digits) digits += c;
    return {expression.substr(0, expression.rfind(':')), type_of_number(std::max(read_int(digits), 0))};
}

std::string_view number_field(std::string_view text, int n) {
    std::size_t begin = 0;
    for (std::size_t comma; n > 0 && (comma = text.find(',', begin)) != std::string_view::npos; --n) begin = comma + 1;
    return text.substr(begin, std::min(text.find(',', begin) - begin, max_field));
}

namespace {

// Calls visit(field) for the fields of a norm line until it returns true.
template <class Visit>
void visit_norm_fields(std::string_view text, Visit&& visit) {
    const bool has_brackets = text.find_first_of("([") != std::string_view::npos;
    std::size_t begin = 0, at = 0;
    // Double-byte trail bytes can look like "[" and "]", never like "(", ")" or ",".
    for (int depth = 0; at < text.size(); at += has_brackets ? char_length(text.substr(at)) : 1) {
        const char c = text[at];
        if (c == '(' || c == '[') ++depth;
        if (c == ')' || c == ']') depth = std::max(depth - 1, 0);
        if (c != ',' || (has_brackets && depth > 0)) continue;
        if (visit(text.substr(begin, std::min(at - begin, max_field)))) return;
        begin = at + 1;
    }
    visit(text.substr(begin, std::min(at - begin, max_field)));
}

}  // namespace

std::string_view norm_field(std::string_view text, int n) {
    std::string_view last;
    visit_norm_fields(text, [&](std::string_view field) {
        last = field;
        if (n <= 0) return true;
        --n;
        return false;
    });
    return last;
}

std::vector<std::string_view> norm_fields(std::string_view text) {
    std::vector<std::string_view> fields;
    visit_norm_fields(text, [&](std::string_view field) {
        fields.push_back(field);
        return false;
    });
    return fields;
}

std::string_view norm_of_band(std::string_view list, bool second_set, int band) {
    if (band >= 0) return norm_field(list, second_set ? band / 100 : band % 100);
    return norms_differ(list) ? std::string_view() : norm_field(list, 0);
}

bool norms_differ(std::string_view list) {
    constexpr int most_bands = 100;
    const std::string_view first = norm_field(list, 0);
    std::string_view before = first;
    for (int band = 1; band < most_bands; ++band) {
        const std::string_view field = norm_field(list, band);
        if (field.data() == before.data()) return false;  // the last one serves all further bands
        if (field != first) return true;
        before = field;
    }
    return false;
}

}  // namespace tool
