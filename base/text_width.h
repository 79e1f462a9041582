// UTF-8 text on a terminal: how many columns it takes, and how it is cut and padded to a number of them.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace cephtool {

// Of everything that is shown as text for people.
inline constexpr int page_width = 80;

// Takes the next character off `text`, which must not be empty. Malformed bytes give U+FFFD, one byte at a time.
char32_t next_character(std::string_view& text);

// Offset of the first byte that is not UTF-8, npos when all are.
std::size_t first_malformed(std::string_view text);

// East Asian wide and fullwidth characters take two columns, combining marks and other invisible ones none.
int display_width(std::string_view text);

// `text` in at most `width` columns, cut with "…" only when it is wider. A width below 1 gives "".
std::string fitted(std::string_view text, int width);

// `text` filled up with blanks to `width` columns; unchanged when it is wider.
std::string left_aligned(std::string_view text, int width);
std::string right_aligned(std::string_view text, int width);

// `text` in lines of at most `width` columns, broken at blanks; a single word that is wider stays whole.
std::string wrapped(std::string_view text, int width, std::string_view indent);

// Safe to show: control characters become "\x1B", those that turn the direction of text "\u202E", malformed bytes
// U+FFFD.
std::string printable(std::string_view text);

// printable(), cut to a readable length, in double quotes: what was found, in a message.
std::string in_quotes(std::string_view text);

// printable(), of a name of a file: one that is longer than any that people give is cut in the middle.
std::string shown_name(std::string_view path);

// The parts one after the other, with `between` between them.
std::string joined(std::span<const std::string> parts, std::string_view between);

bool has_control_character(std::string_view text);

// Letters A to Z in lower case, everything else as it is.
std::string lower_case(std::string_view text);

// Without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

}  // namespace cephtool
