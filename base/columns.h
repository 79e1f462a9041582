// Text on a terminal, or in a typeface as wide: how many columns it takes, and how it is cut and padded to a number of
// them. UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace cephtool {

// Of everything that is shown as text for people.
inline constexpr int page_width = 80;

// East Asian wide and fullwidth characters take two columns, combining marks and other invisible ones none.
int display_width(std::string_view text);

// `text` in at most `width` columns, cut with "…" only when it is wider. A width below 1 gives "".
std::string fitted(std::string_view text, int width);

// `text` filled up with blanks to `width` columns; unchanged when it is wider.
std::string left_aligned(std::string_view text, int width);
std::string right_aligned(std::string_view text, int width);

// `text` in lines of at most `width` columns, broken at blanks; a single word that is wider stays whole,
// but for its wide characters, in front of which Japanese is broken unless they end a sentence or a bracket.
std::string wrapped(std::string_view text, int width, std::string_view indent);

}  // namespace cephtool
