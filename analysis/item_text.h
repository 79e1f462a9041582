// The parts of item and norm lines: "name=expression;alternative;...:type" and "name=value,value,...".
#pragma once

#include <string_view>
#include <vector>

namespace tool {

// Column 0..2 and row mark 0..3 of the result list, packed into an item's type number.
struct ItemType {
    int column = 0;
    int mode = 1;
};

struct TypedExpression {
    std::string_view expression;  // without the type suffix
    ItemType type;
};

// Splits at the last ":"; the text ends at the first CR, LF or NUL at the latest.
// Kept: the type's digits are gathered from the first ":" on, so "a:1b:2" is of type 1, although only ":2" is cut off.
TypedExpression split_type(std::string_view expression);

// Field n (from 0; a negative n counts as 0) between commas, cut at 100 bytes.
// Kept: a list with fewer fields gives its last one, so that one norm serves every age band.
std::string_view number_field(std::string_view text, int n);

// The same, but a comma inside "(" or "[" separates nothing, so that a norm may be a formula with arguments.
std::string_view norm_field(std::string_view text, int n);
std::vector<std::string_view> norm_fields(std::string_view text);  // all of them; one at least

// The norm that a band code picks: field `band` mod 100, in the second set `band` / 100. Below 0 the band is not known;
// then the norm that all bands have, and "" when they differ.
std::string_view norm_of_band(std::string_view list, bool second_set, int band);
bool norms_differ(std::string_view list);

}  // namespace tool
